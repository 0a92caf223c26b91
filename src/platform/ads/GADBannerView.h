#pragma once

#include <memory>
#include <string>

#include "platform/uikit/UIView.h"

struct GADError;
class GADBannerView;

class GADBannerViewDelegate {
 public:
  virtual ~GADBannerViewDelegate() = default;
  virtual void bannerViewDidReceiveAd(GADBannerView& bannerView) = 0;
  virtual void bannerViewDidFailToReceiveAdWithError(GADBannerView& bannerView, const GADError& error) = 0;
};

// A Google banner.
class GADBannerView : public UIView {
 public:
  using UIView::UIView;
  const char* className() const override { return "GADBannerView"; }
  std::weak_ptr<GADBannerViewDelegate> delegate;
};
