#pragma once

#include "platform/uikit/UIControl.h"

// A continuous control between a minimum and a maximum. Setting the bounds pulls the value in.
class UISlider : public UIControl {
 public:
  using UIControl::UIControl;
  const char* className() const override { return "UISlider"; }

  float value() const { return value_; }
  void setValue(float value, bool animated = false);
  float minimumValue() const { return minimum_; }
  void setMinimumValue(float minimum);
  float maximumValue() const { return maximum_; }
  void setMaximumValue(float maximum);

 private:
  float clamped(float v) const;
  float value_ = 0;
  float minimum_ = 0;
  float maximum_ = 1;
};
