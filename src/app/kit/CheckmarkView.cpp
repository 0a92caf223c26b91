#include "app/kit/CheckmarkView.h"

#include <algorithm>
#include <cmath>

namespace nimbrel {

namespace {
constexpr std::string_view kToggleSelector = "onCheckmarkWithSender:";
constexpr double kInset = 3.0;

// Edges land on whole points as the drawing code rounds them.
double snap(double x) { return std::floor(x + 0.5); }
}  // namespace

CheckmarkView::CheckmarkView() : CheckmarkView(CGRect{}) {}

CheckmarkView::CheckmarkView(CGRect frame) : UIView(frame) {
  setBackgroundColor(UIColor::clearColor());
}

void CheckmarkView::setSelected(bool selected) {
  if (selected == selected_) return;
  selected_ = selected;
  setNeedsDisplay();
}

void CheckmarkView::onCheckmarkWithSender(const std::shared_ptr<NSObject>&) {
  selected_ = !selected_;
  setNeedsDisplay();
}

bool CheckmarkView::performAction(std::string_view selector, const std::shared_ptr<NSObject>& sender) {
  if (selector != kToggleSelector) return UIView::performAction(selector, sender);
  onCheckmarkWithSender(sender);
  return true;
}

bool CheckmarkView::respondsToSelector(std::string_view selector) const {
  return selector == kToggleSelector || UIView::respondsToSelector(selector);
}

CheckmarkView::Drawing CheckmarkView::drawing() const {
  CGRect b = bounds();
  double left = snap(b.minX() + kInset), top = snap(b.minY() + kInset);
  double right = snap(b.maxX() - kInset), bottom = snap(b.maxY() - kInset);
  Drawing d;
  d.oval = CGRectMake(left, top, std::max(0.0, right - left), std::max(0.0, bottom - top));
  d.shadowOffset = {0.1, -0.1};
  d.shadowBlur = 2.5;
  d.shadowColor = selected_ ? colors_.selectionShadowColor() : colors_.unselectionShadowColor();
  d.fillColor = selected_ ? colors_.selectionFillColor() : colors_.unselectionFillColor();
  d.strokeColor = selected_ ? colors_.selectionStrokeColor() : colors_.unselectionStrokeColor();
  d.lineWidth = 1.0;
  d.check = {{7.0, 12.5}, {11.0, 16.0}, {17.5, 9.5}};
  return d;
}

}  // namespace nimbrel
