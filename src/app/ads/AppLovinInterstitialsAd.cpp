#include "app/ads/AppLovinInterstitialsAd.h"

#include <random>

#include "app/ads/AdLog.h"
#include "app/ads/AppLovinAdId.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FatalError.h"
#include "platform/foundation/SharedInstance.h"
#include "platform/libs/SVProgressHUD.h"

namespace nimbrel {

namespace {
constexpr const char* kFile = "Nimbrel/AppLovinInterstitialsAd";

struct InterstitialHolder {
  std::shared_ptr<MAInterstitialAd> ad = std::make_shared<MAInterstitialAd>(AppLovinAdId::interstitialAdUnit);
};
}  // namespace

std::shared_ptr<AppLovinInterstitialsAd> AppLovinInterstitialsAd::shared() {
  return SharedInstance<AppLovinInterstitialsAd>::get();
}

std::shared_ptr<MAInterstitialAd> AppLovinInterstitialsAd::interstitialAd() {
  return SharedInstance<InterstitialHolder>::get()->ad;
}

void AppLovinInterstitialsAd::load(std::function<void(bool)> loaded) {
  completionLoaded = std::move(loaded);
  auto ad = interstitialAd();
  ad->setDelegate(std::shared_ptr<MAAdDelegate>(strongSelf<AppLovinInterstitialsAd>()));
  ad->loadAd();
}

void AppLovinInterstitialsAd::offerInterstitial() {
  completion = [](bool) {};
  auto ad = interstitialAd();
  if (!ad->isReady()) return;
  SVProgressHUD::showWithStatus("Loading Ads...");
  SVProgressHUD::dismissWithDelay(0.5, [ad] { ad->showAd(); });
}

void AppLovinInterstitialsAd::offerThenContinue(bool showHud, bool randomised, int bound, int hit,
                                                const std::string& source,
                                                std::function<void()> continuation) {
  if (randomised) {
    if (bound < 1) fatalError("Range requires lowerBound <= upperBound", "Swift/ClosedRange.swift", 347);
    static std::mt19937 engine{std::random_device{}()};
    int r = std::uniform_int_distribution<int>(1, bound)(engine);
    if (r != hit) return;
  }
  completion = [](bool) {};
  auto ad = interstitialAd();
  if (ad->isReady()) {
    if (showHud) {
      SVProgressHUD::showWithStatus("Loading Ads...");
      SVProgressHUD::dismissWithDelay(0.5, [ad] { ad->showAd(); });
    } else {
      ad->showAd();
    }
  }
  DispatchQueue::main().asyncAfter(2.0, std::move(continuation));
}

void AppLovinInterstitialsAd::requireCompletionLoaded(int line) const {
  if (!completionLoaded) {
    fatalError("Unexpectedly found nil while unwrapping an Optional value", kFile, line);
  }
}

void AppLovinInterstitialsAd::didLoadAd(const MAAd&) {
  debugPrintLine("didLoad(_:)");
  requireCompletionLoaded(64);
  completionLoaded(true);
}

void AppLovinInterstitialsAd::didFailToLoadAdForAdUnitIdentifier(const std::string&, const MAError&) {
  debugPrintLine("didFailToLoadAd(forAdUnitIdentifier:withError:)");
  requireCompletionLoaded(69);
  completionLoaded(false);
}

void AppLovinInterstitialsAd::didDisplayAd(const MAAd&) {
  debugPrintLine("didDisplay(_:)");
}

void AppLovinInterstitialsAd::didHideAd(const MAAd&) {
  debugPrintLine("didHide(_:)");
  load([](bool) {});
  if (completion) completion(true);
}

void AppLovinInterstitialsAd::didClickAd(const MAAd&) {
  debugPrintLine("didClick(_:)");
}

void AppLovinInterstitialsAd::didFailToDisplayAd(const MAAd&, const MAError&) {
  debugPrintLine("didFail(toDisplay:withError:)");
  requireCompletionLoaded(88);
  completionLoaded(false);
}

}  // namespace nimbrel
