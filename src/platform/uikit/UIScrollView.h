#pragma once

#include <memory>

#include "platform/uikit/UIView.h"

class UIScrollView;

class UIScrollViewDelegate {
 public:
  virtual ~UIScrollViewDelegate() = default;
  virtual void scrollViewDidScroll(UIScrollView& scrollView) {}
  virtual std::shared_ptr<UIView> viewForZoomingInScrollView(UIScrollView& scrollView) { return nullptr; }
  virtual void scrollViewDidZoom(UIScrollView& scrollView) {}
};

class UIScrollView : public UIView {
 public:
  using UIView::UIView;
  const char* className() const override { return "UIScrollView"; }

  CGPoint contentOffset() const { return contentOffset_; }
  // Moves the content and tells the delegate, as a user's scroll would.
  void setContentOffset(CGPoint offset, bool animated = false);
  // Told after the content moved, before the delegate hears of it.
  virtual void contentOffsetDidChange() {}
  CGSize contentSize() const { return contentSize_; }
  void setContentSize(CGSize size);
  UIEdgeInsets contentInset() const { return contentInset_; }
  void setContentInset(UIEdgeInsets inset);

  double zoomScale() const { return zoomScale_; }
  void setZoomScale(double scale, bool animated = false);
  double minimumZoomScale() const { return minimumZoomScale_; }
  void setMinimumZoomScale(double s) { minimumZoomScale_ = s; }
  double maximumZoomScale() const { return maximumZoomScale_; }
  void setMaximumZoomScale(double s) { maximumZoomScale_ = s; }

  // Zooms so that `rect` (in the zoom view's own coordinates) fills the scroll view.
  void zoomToRect(CGRect rect, bool animated);
  // A point of a subview (the zoom view, scaled by the zoom) in this view's coordinates.
  CGPoint convertPointFromCoordinateSpace(CGPoint point, const UIView* space) const;
  bool showsScrollIndicators = true;
  int contentInsetAdjustmentBehavior = 0;

  void setDelegate(std::weak_ptr<UIScrollViewDelegate> delegate) { delegate_ = std::move(delegate); }
  std::shared_ptr<UIScrollViewDelegate> delegate() const { return delegate_.lock(); }

 private:
  CGPoint contentOffset_;
  CGSize contentSize_;
  UIEdgeInsets contentInset_;
  double zoomScale_ = 1, minimumZoomScale_ = 1, maximumZoomScale_ = 1;
  CGSize zoomBaseSize_;
  std::weak_ptr<UIScrollViewDelegate> delegate_;
};
