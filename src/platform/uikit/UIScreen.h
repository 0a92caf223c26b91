#pragma once

#include "platform/uikit/CGGeometry.h"

// The device's screen, as the platform backend configures it at start.
class UIScreen {
 public:
  static UIScreen& mainScreen();
  CGRect bounds() const;
  double scale() const;
  void configure(CGSize size, double scale);

 private:
  CGSize size_{390, 844};
  double scale_ = 3;
};
