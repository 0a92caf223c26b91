#pragma once

#include <optional>

#include "platform/ads/MAAd.h"
#include "platform/ads/MANativeAdViewBinder.h"
#include "platform/uikit/UIView.h"

// A native ad's view: its subviews are found by the binder's tags, and rendering puts the
// creative into them.
class MANativeAdView : public UIView {
 public:
  using UIView::UIView;
  const char* className() const override { return "MANativeAdView"; }

  void bindViewsWithAdViewBinder(const MANativeAdViewBinder& binder) { binder_ = binder; }
  const std::optional<MANativeAdViewBinder>& binder() const { return binder_; }
  // Fills the bound subviews with the creative.
  void render(const MAAd& ad);
  const std::optional<MAAd>& renderedAd() const { return ad_; }

 private:
  std::optional<MANativeAdViewBinder> binder_;
  std::optional<MAAd> ad_;
};
