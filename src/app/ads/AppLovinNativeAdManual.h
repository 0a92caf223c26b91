#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/ads/MANativeAdDelegate.h"
#include "platform/ads/MANativeAdLoader.h"
#include "platform/ads/MANativeAdView.h"
#include "platform/foundation/NSObject.h"
#include "platform/uikit/UIView.h"

namespace nimbrel {

// Native ads with a manual layout: one shared instance caches what the launch loaded, and each
// screen has its own instance for the ad at its foot.
class AppLovinNativeAdManual : public NSObject, public MANativeAdDelegate {
 public:
  static std::shared_ptr<AppLovinNativeAdManual> shared();

  std::vector<MAAd> arrNativeAd;
  std::function<void(const MAAd&)> completion;
  std::shared_ptr<MANativeAdLoader> nativeAdLoader;
  std::shared_ptr<MANativeAdView> maNativeAdView;
  std::optional<MAAd> nativeAd;

  void load(const std::string& adUnit, std::function<void(const MAAd&)> completion);
  // Builds the nib's layout `layoutIndex`, renders the ad into it and pins it over `host`. Views
  // rendered before stay underneath.
  void render(size_t layoutIndex, const MAAd& ad, const std::shared_ptr<UIView>& host);

  void didLoadNativeAd(const std::shared_ptr<MANativeAdView>& view, const MAAd& ad) override;
  void didFailToLoadNativeAdForAdUnitIdentifier(const std::string& adUnit, const MAError& error) override;
  void didClickNativeAd(const MAAd& ad) override;
};

// Loads a screen's native ad and renders it into `host` if the screen is still alive then.
void loadScreenNativeAd(const std::shared_ptr<AppLovinNativeAdManual>& placement,
                        std::weak_ptr<NSObject> screen, std::weak_ptr<UIView> host);

}  // namespace nimbrel
