#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/ads/MAAdDelegate.h"
#include "platform/ads/MAInterstitialAd.h"
#include "platform/foundation/NSObject.h"

namespace nimbrel {

// The one interstitial of the program: loaded at launch, offered where screens say so, loaded
// again after each close.
class AppLovinInterstitialsAd : public NSObject, public MAAdDelegate {
 public:
  static std::shared_ptr<AppLovinInterstitialsAd> shared();
  // The SDK object, made once on first use and kept for the whole process.
  static std::shared_ptr<MAInterstitialAd> interstitialAd();

  std::function<void(bool)> completionLoaded;
  std::function<void(bool)> completion;

  void load(std::function<void(bool)> completionLoaded);
  // The screens' inline offer: a ready ad shows after "Loading Ads..." for 0.5 s; otherwise nothing.
  void offerInterstitial();
  // The splash's offer; the continuation runs 2.0 s later whether or not an ad showed.
  void offerThenContinue(bool showHud, bool randomised, int bound, int hit, const std::string& source,
                         std::function<void()> continuation);

  void didLoadAd(const MAAd& ad) override;
  void didFailToLoadAdForAdUnitIdentifier(const std::string& adUnit, const MAError& error) override;
  void didDisplayAd(const MAAd& ad) override;
  void didHideAd(const MAAd& ad) override;
  void didClickAd(const MAAd& ad) override;
  void didFailToDisplayAd(const MAAd& ad, const MAError& error) override;

 private:
  void requireCompletionLoaded(int line) const;
};

}  // namespace nimbrel
