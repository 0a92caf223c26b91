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
  auto d = delegate_.lock();
  auto zoomView = d ? d->viewForZoomingInScrollView(*this) : nullptr;
  if (zoomView && zoomScale_ == 1.0) zoomBaseSize_ = zoomView->frame().size;
  zoomScale_ = std::clamp(scale, minimumZoomScale_, std::max(minimumZoomScale_, maximumZoomScale_));
  if (zoomView) {
    // The zoom view grows with the scale; the content is as large as it is.
    CGSize size{zoomBaseSize_.width * zoomScale_, zoomBaseSize_.height * zoomScale_};
    zoomView->setFrame(CGRect{zoomView->frame().origin, size});
    setContentSize(size);
  }
  didChange();
  if (d) d->scrollViewDidZoom(*this);
  // A smaller content cannot be looked at from where a larger one was: the offset comes back
  // within it, as the platform's scroll view brings it back after zooming out.
  const UIEdgeInsets inset = contentInset_;
  const double maxX = std::max(-inset.left, contentSize_.width + inset.right - bounds().width());
  const double maxY = std::max(-inset.top, contentSize_.height + inset.bottom - bounds().height());
  CGPoint within{std::clamp(contentOffset_.x, -inset.left, maxX), std::clamp(contentOffset_.y, -inset.top, maxY)};
  if (zoomView && (within.x != contentOffset_.x || within.y != contentOffset_.y)) setContentOffset(within);
}

void UIScrollView::zoomToRect(CGRect rect, bool animated) {
  if (rect.width() <= 0 || rect.height() <= 0) return;
  double scale = std::min(bounds().width() / rect.width(), bounds().height() / rect.height());
  setZoomScale(scale, animated);
  setContentOffset({rect.minX() * zoomScale_, rect.minY() * zoomScale_}, animated);
}

CGPoint UIScrollView::convertPointFromCoordinateSpace(CGPoint point, const UIView* space) const {
  if (!space) return point;
  double scale = zoomScale_;
  return {space->frame().minX() + point.x * scale, space->frame().minY() + point.y * scale};
}
