#pragma once

#include <memory>

#include "platform/ads/MAAdView.h"
#include "platform/foundation/NSObject.h"
#include "platform/uikit/UIView.h"

namespace nimbrel {

// A banner placement: shows its host view while an ad stands in it. No screen creates one.
class AppLovinBannerAd : public NSObject, public MAAdViewAdDelegate {
 public:
  std::shared_ptr<MAAdView> bannerAd;
  std::shared_ptr<UIView> view;

  void didExpandAd(const MAAd& ad) override;
  void didCollapseAd(const MAAd& ad) override;
  void didLoadAd(const MAAd& ad) override;
  void didFailToLoadAdForAdUnitIdentifier(const std::string& adUnit, const MAError& error) override;
  void didDisplayAd(const MAAd& ad) override;
  void didHideAd(const MAAd& ad) override;
  void didClickAd(const MAAd& ad) override;
  void didFailToDisplayAd(const MAAd& ad, const MAError& error) override;

 private:
  // The host is taken as set: a callback without one ends the process.
  UIView& host(int line);
};

}  // namespace nimbrel
