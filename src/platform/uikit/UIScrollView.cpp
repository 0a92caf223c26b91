#include "platform/uikit/UIScrollView.h"

#include <algorithm>

void UIScrollView::setContentOffset(CGPoint offset, bool animated) {
  contentOffset_ = offset;
  contentOffsetDidChange();
  didChange();
  if (auto d = delegate_.lock()) d->scrollViewDidScroll(*this);
}

void UIScrollView::setContentSize(CGSize size) {
  contentSize_ = size;
  didChange();
}

void UIScrollView::setContentInset(UIEdgeInsets inset) {
  contentInset_ = inset;
  didChange();
}

void UIScrollView::setZoomScale(double scale, bool animated) {
  zoomScale_ = std::clamp(scale, minimumZoomScale_, std::max(minimumZoomScale_, maximumZoomScale_));
  didChange();
  if (auto d = delegate_.lock()) d->scrollViewDidZoom(*this);
}
