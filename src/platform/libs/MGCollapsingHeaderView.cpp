#include "platform/libs/MGCollapsingHeaderView.h"

#include <algorithm>

void MGCollapsingHeaderView::setCollapsingConstraint(std::shared_ptr<NSLayoutConstraint> constraint) {
  constraint_ = std::move(constraint);
  fullHeight_.reset();
  progress_ = 0;
}

void MGCollapsingHeaderView::addTransformingSubview(std::shared_ptr<UIView> view,
                                                    std::vector<MGTransform> attributes) {
  if (!view) return;
  double start = view->alpha();
  transforming_.push_back({std::move(view), std::move(attributes), start});
  applyProgress();
}

void MGCollapsingHeaderView::collapseWithScroll(const UIScrollView& scrollView) {
  if (!constraint_) return;
  if (!fullHeight_) fullHeight_ = constraint_->constant();
  const double full = *fullHeight_;
  const double distance = full - minimumHeaderHeight_;
  if (distance <= 0) return;

  const double dy = scrollView.contentOffset().y;
  const double target = dy > 0 ? std::max(minimumHeaderHeight_, full - dy) : full;
  const double current = constraint_->constant();
  if (target == current) return;
  if (target < current && !alwaysCollapse_ &&
      scrollView.contentSize().height <= scrollView.frame().height() + distance) {
    return;
  }

  constraint_->setConstant(target);
  progress_ = (full - target) / distance;
  applyProgress();

  auto delegate = delegate_.lock();
  if (!delegate) return;
  if (target < current) {
    if (target <= minimumHeaderHeight_) {
      delegate->headerDidFinishCollapsing();
    } else {
      delegate->headerDidCollapseToOffset(dy);
    }
  } else if (target >= full) {
    delegate->headerDidFinishExpanding();
  } else {
    delegate->headerDidExpandToOffset(dy);
  }
}

void MGCollapsingHeaderView::applyProgress() {
  for (const auto& t : transforming_) {
    for (const auto& a : t.attributes) {
      if (a.attribute != MGTransform::alpha) continue;
      t.view->setAlpha(std::clamp(t.startAlpha + a.value * progress_, 0.0, 1.0));
    }
  }
}
