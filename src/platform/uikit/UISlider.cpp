#include "platform/uikit/UISlider.h"

#include <algorithm>

float UISlider::clamped(float v) const { return std::clamp(v, minimum_, std::max(minimum_, maximum_)); }

void UISlider::setValue(float value, bool) {
  value_ = clamped(value);
  didChange();
}

void UISlider::setMinimumValue(float minimum) {
  minimum_ = minimum;
  if (maximum_ < minimum_) maximum_ = minimum_;
  value_ = clamped(value_);
  didChange();
}

void UISlider::setMaximumValue(float maximum) {
  maximum_ = maximum;
  if (minimum_ > maximum_) minimum_ = maximum_;
  value_ = clamped(value_);
  didChange();
}
