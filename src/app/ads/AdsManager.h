#pragma once

#include <memory>
#include <vector>

#include "platform/ads/GADAdLoader.h"
#include "platform/ads/GADInterstitialAd.h"
#include "platform/foundation/Date.h"
#include "platform/foundation/NSObject.h"

namespace nimbrel {

class AdsManagerDelegate {
 public:
  virtual ~AdsManagerDelegate() = default;
  virtual void didReceiveNativeAds() = 0;
  virtual void willDismissAd() = 0;
};

// Keeps one Google interstitial loaded. Nothing in the program presents it.
class AdsManager : public NSObject, public GADFullScreenContentDelegate {
 public:
  static std::shared_ptr<AdsManager> shared();
  AdsManager();

  std::weak_ptr<AdsManagerDelegate> delegate;
  std::vector<GADNativeAd> arrNativeAds;
  // The creation of the manager; nothing compares it.
  Date loadTime;

  void loadInterstitial();
  void presentInterstitial();

  // Native-loader callbacks, kept for a loader that nothing creates.
  void adLoaderDidReceiveNativeAd(const GADNativeAd& ad);
  void adLoaderDidFailToReceiveAdWithError(const std::string& loaderDescription, const GADError& error);

  void adDidFailToPresentFullScreenContentWithError(GADInterstitialAd& ad, const GADError& error) override;
  void adWillDismissFullScreenContent(GADInterstitialAd& ad) override;
  void adDidDismissFullScreenContent(GADInterstitialAd& ad) override;

  // The process-wide interstitial (nil until the first load succeeds) and the native flag.
  static std::shared_ptr<GADInterstitialAd>& googleInterstitial();
  static bool& isGoogleNativeAdLoaded();
};

}  // namespace nimbrel
