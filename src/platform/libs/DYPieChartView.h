#pragma once

#include <vector>

#include "platform/uikit/UIColor.h"
#include "platform/uikit/UIView.h"

// The ring chart library as state: its geometry, sector colours, and every animation it was asked
// to run (the last one's scale values are what it shows once that animation ends).
class DYPieChartView : public UIView {
 public:
  struct Animation {
    std::vector<double> scaleValues;
    double duration = 0;
  };
  using UIView::UIView;
  const char* className() const override { return "DYPieChartView"; }

  double startAngle = 0;
  bool clockwise = true;
  double lineWidth = 1;

  const std::vector<UIColor>& sectorColors() const { return sectorColors_; }
  void setSectorColors(std::vector<UIColor> colors) {
    sectorColors_ = std::move(colors);
    didChange();
  }
  void animateToScaleValues(std::vector<double> values, double duration) {
    animations_.push_back({std::move(values), duration});
    didChange();
  }
  const std::vector<Animation>& animations() const { return animations_; }
  std::vector<double> scaleValues() const { return animations_.empty() ? std::vector<double>{} : animations_.back().scaleValues; }

 private:
  std::vector<UIColor> sectorColors_;
  std::vector<Animation> animations_;
};
