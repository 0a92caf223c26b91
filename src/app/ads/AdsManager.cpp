#include "app/ads/AdsManager.h"

#include "app/ads/AppLovinAdId.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FatalError.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/SharedInstance.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIViewController.h"

namespace nimbrel {

namespace {
struct GoogleGlobals {
  std::shared_ptr<GADInterstitialAd> interstitial;
  bool nativeLoaded = false;
};
}  // namespace

std::shared_ptr<AdsManager> AdsManager::shared() {
  return SharedInstance<AdsManager>::get();
}

AdsManager::AdsManager() : loadTime(Date::now()) {}

std::shared_ptr<GADInterstitialAd>& AdsManager::googleInterstitial() {
  return SharedInstance<GoogleGlobals>::get()->interstitial;
}

bool& AdsManager::isGoogleNativeAdLoaded() {
  return SharedInstance<GoogleGlobals>::get()->nativeLoaded;
}

void AdsManager::loadInterstitial() {
  std::weak_ptr<AdsManager> weak = strongSelf<AdsManager>();
  GADInterstitialAd::loadWithAdUnitID(
      kGoogleInterstitialAdUnit, GADRequest{},
      [weak](std::shared_ptr<GADInterstitialAd> ad, std::optional<GADError> error) {
        if (error) {
          NSLog("Interstitial load error " + error->localizedDescription);
          return;
        }
        NSLog("Interstitial load");
        googleInterstitial() = ad;
        if (auto self = weak.lock()) {
          ad->setFullScreenContentDelegate(std::shared_ptr<GADFullScreenContentDelegate>(self));
        }
      });
}

void AdsManager::presentInterstitial() {
  DispatchQueue::main().async([] {
    auto window = UIApplication::sharedApplication().keyWindow();
    auto root = window ? window->rootViewController() : nullptr;
    auto ad = googleInterstitial();
    if (!ad) return;
    if (!root) fatalError("Unexpectedly found nil while unwrapping an Optional value", "Nimbrel/AdsManager", 71);
    ad->presentFromRootViewController(root);
  });
}

void AdsManager::adLoaderDidReceiveNativeAd(const GADNativeAd& ad) {
  isGoogleNativeAdLoaded() = true;
  arrNativeAds.push_back(ad);
  if (auto d = delegate.lock()) d->didReceiveNativeAds();
}

void AdsManager::adLoaderDidFailToReceiveAdWithError(const std::string& loaderDescription,
                                                     const GADError& error) {
  NSLog(loaderDescription + " failed with error: " + error.localizedDescription);
  isGoogleNativeAdLoaded() = false;
}

void AdsManager::adDidFailToPresentFullScreenContentWithError(GADInterstitialAd&, const GADError& error) {
  NSLog("Ad did fail to present full screen content. " + error.localizedDescription);
  loadInterstitial();
}

void AdsManager::adWillDismissFullScreenContent(GADInterstitialAd&) {
  if (auto d = delegate.lock()) d->willDismissAd();
}

void AdsManager::adDidDismissFullScreenContent(GADInterstitialAd&) {
  NSLog("Ad did dismiss full screen content.");
  loadInterstitial();
}

}  // namespace nimbrel
