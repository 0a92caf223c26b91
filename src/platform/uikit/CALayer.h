#pragma once

#include <optional>

#include "platform/uikit/CGGeometry.h"
#include "platform/uikit/UIColor.h"

// The drawing attributes of a view that the behaviour sets.
struct CALayer {
  // kCALayerMinXMinYCorner = 1, MaxXMinY = 2, MinXMaxY = 4, MaxXMaxY = 8.
  enum : unsigned { allCorners = 15 };
  double cornerRadius = 0;
  unsigned maskedCorners = allCorners;
  bool masksToBounds = false;
  double borderWidth = 0;
  std::optional<UIColor> borderColor;
  double shadowOpacity = 0;
  UIColor shadowColor = UIColor::blackColor();
  CGSize shadowOffset{0, -3};
  double shadowRadius = 3;
};
