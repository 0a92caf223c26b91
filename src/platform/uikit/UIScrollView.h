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

  void setDelegate(std::weak_ptr<UIScrollViewDelegate> delegate) { delegate_ = std::move(delegate); }
  std::shared_ptr<UIScrollViewDelegate> delegate() const { return delegate_.lock(); }

 private:
  CGPoint contentOffset_;
  CGSize contentSize_;
  UIEdgeInsets contentInset_;
  double zoomScale_ = 1, minimumZoomScale_ = 1, maximumZoomScale_ = 1;
  std::weak_ptr<UIScrollViewDelegate> delegate_;
};
