#include "app/kit/ProgressView.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

#include "platform/foundation/FatalError.h"

namespace nimbrel {

namespace {
constexpr double kCircleLineWidth = 3.0;
constexpr double kProgressLineWidth = 7.0;

// Int(Double): truncation, ending the process where the integer conversion traps.
std::int64_t wholeNumber(double value) {
  if (!std::isfinite(value)) {
    fatalError("Double value cannot be converted to Int because it is either infinite or NaN");
  }
  // 2^63: the first double above the 64-bit range; -2^63 itself still fits.
  constexpr double kLimit = 9223372036854775808.0;
  if (value >= kLimit) fatalError("Double value cannot be converted to Int because the result would be greater than Int.max");
  if (value < -kLimit) fatalError("Double value cannot be converted to Int because the result would be less than Int.min");
  return static_cast<std::int64_t>(value);
}
}  // namespace

ProgressView::ProgressView() : ProgressView(CGRect{}) {}

ProgressView::ProgressView(CGRect frame)
    : UIView(frame), labelPercentage_(std::make_shared<UILabel>(CGRect{{0, 0}, frame.size})) {
  labelPercentage_->setTextAlignment(NSTextAlignment::center);
  redraw();
}

void ProgressView::setColor(UIColor color) {
  color_ = color;
  circle_.strokeColor = color;
  progressArc_.strokeColor = color;
  setNeedsDisplay();
}

void ProgressView::set(double progress, double duration) {
  const std::int64_t percent = wholeNumber(progress * 100);
  animation_ = StrokeAnimation{"strokeEnd", progress_, progress, duration};
  progress_ = progress;
  progressArc_.strokeEnd = progress;
  labelPercentage_->setText(std::to_string(percent) + "%");
  adoptLabel();
  setNeedsDisplay();
}

void ProgressView::redraw() {
  CGRect b = bounds();
  Arc arc;
  arc.center = {b.width() / 2, b.height() / 2};
  // The thick arc stays inside the view.
  arc.radius = std::max(0.0, (std::min(b.width(), b.height()) - kProgressLineWidth) / 2);
  arc.startAngle = -std::numbers::pi / 2;
  arc.endAngle = 3 * std::numbers::pi / 2;
  arc.strokeColor = color_;

  circle_ = arc;
  circle_.lineWidth = kCircleLineWidth;
  circle_.strokeEnd = 1.0;
  progressArc_ = arc;
  progressArc_.lineWidth = kProgressLineWidth;
  progressArc_.strokeEnd = 0.0;
  adoptLabel();
  setNeedsDisplay();
}

void ProgressView::adoptLabel() {
  if (labelAdopted_ || weak_from_this().expired()) return;
  labelAdopted_ = true;
  labelPercentage_->setFrame(bounds());
  addSubview(labelPercentage_);
}

}  // namespace nimbrel
