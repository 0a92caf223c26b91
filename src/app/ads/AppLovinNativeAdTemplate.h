#pragma once

#include <memory>

#include "platform/ads/MANativeAdDelegate.h"
#include "platform/ads/MANativeAdLoader.h"
#include "platform/foundation/NSObject.h"
#include "platform/uikit/UIView.h"

namespace nimbrel {

// A native placement drawn from the SDK's own template, pinned over its host. No screen creates one.
class AppLovinNativeAdTemplate : public NSObject, public MANativeAdDelegate {
 public:
  std::shared_ptr<MANativeAdLoader> nativeAdLoader;
  std::shared_ptr<UIView> view;

  void didLoadNativeAd(const std::shared_ptr<MANativeAdView>& adView, const MAAd& ad) override;
  void didFailToLoadNativeAdForAdUnitIdentifier(const std::string& adUnit, const MAError& error) override;
  void didClickNativeAd(const MAAd& ad) override;

 private:
  UIView& host(int line);
};

}  // namespace nimbrel
