#include "app/kit/HUDFigureView.h"

namespace nimbrel {

void HUDFigureView::show(std::string figure, UIColor color, double duration, bool repeats) {
  figure_ = std::move(figure);
  color_ = color;
  duration_ = duration;
  repeats_ = repeats;
  didChange();
}

void HUDFigureView::clear() {
  for (const auto& sub : std::vector<std::shared_ptr<UIView>>(subviews())) sub->removeFromSuperview();
  figure_.clear();
  duration_ = 0;
  didChange();
}

}  // namespace nimbrel
