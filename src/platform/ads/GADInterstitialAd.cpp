#include "platform/ads/GADInterstitialAd.h"

#include "platform/ads/FullScreenAdStage.h"
#include "platform/ads/GoogleAdsNetwork.h"
#include "platform/foundation/DispatchQueue.h"

void GADInterstitialAd::loadWithAdUnitID(const std::string& adUnitID, const GADRequest&,
                                         Handler handler) {
  GoogleAdsNetwork::current()->record("GADInterstitialAd.load " + adUnitID);
  GoogleAdsNetwork::current()->requestInterstitial(adUnitID, [adUnitID, handler](bool fill) {
    if (fill) {
      handler(std::make_shared<GADInterstitialAd>(adUnitID), std::nullopt);
    } else {
      handler(nullptr, GADError{});
    }
  });
}

void GADInterstitialAd::presentFromRootViewController(const std::shared_ptr<UIViewController>&) {
  GoogleAdsNetwork::current()->record("GADInterstitialAd.present " + adUnitID_);
  auto self = strongSelf<GADInterstitialAd>();
  // An interstitial shows once.
  if (presented_ || !FullScreenAdStage::shared().present({"google", "interstitial", adUnitID_}, [self] {
        if (auto d = self->fullScreenContentDelegate()) d->adWillDismissFullScreenContent(*self);
        DispatchQueue::main().async([self] {
          if (auto d = self->fullScreenContentDelegate()) d->adDidDismissFullScreenContent(*self);
        });
      })) {
    DispatchQueue::main().async([self] {
      if (auto d = self->fullScreenContentDelegate()) {
        d->adDidFailToPresentFullScreenContentWithError(*self, GADError{18, "Ad has already been used."});
      }
    });
    return;
  }
  presented_ = true;
  DispatchQueue::main().async([self] {
    if (auto d = self->fullScreenContentDelegate()) d->adWillPresentFullScreenContent(*self);
  });
}
