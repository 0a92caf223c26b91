#include "platform/ads/MAFullscreenAd.h"

#include "platform/ads/AppLovinNetwork.h"
#include "platform/ads/FullScreenAdStage.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/NSLog.h"

MAFullscreenAd::MAFullscreenAd(MAAdFormat format, std::string adUnitIdentifier)
    : format_(format), adUnit_(std::move(adUnitIdentifier)) {
  if (AppLovinNetwork::current()->hasPreloadedAd(format_)) {
    loaded_ = MAAd{format_, adUnit_, "AppLovin", {}, {}, {}};
  }
}

void MAFullscreenAd::loadAd() {
  auto network = AppLovinNetwork::current();
  network->record(std::string(sdkClassName()) + ".loadAd " + adUnit_);
  auto weak = weakSelf<MAFullscreenAd>();
  if (loaded_) {
    // The SDK keeps a loaded ad until it is shown and reports it again.
    DispatchQueue::main().async([weak] {
      auto self = weak.lock();
      if (!self || !self->loaded_) return;
      if (auto d = self->delegate()) d->didLoadAd(*self->loaded_);
    });
    return;
  }
  if (loading_) return;
  loading_ = true;
  network->requestAd(format_, adUnit_, [weak](std::optional<MAAd> ad) {
    auto self = weak.lock();
    if (!self) return;
    self->loading_ = false;
    if (ad) {
      self->loaded_ = *ad;
      if (auto d = self->delegate()) d->didLoadAd(*ad);
    } else if (auto d = self->delegate()) {
      d->didFailToLoadAdForAdUnitIdentifier(self->adUnit_, MAError{});
    }
  });
}

void MAFullscreenAd::showAd() {
  AppLovinNetwork::current()->record(std::string(sdkClassName()) + ".showAd " + adUnit_);
  if (!loaded_) {
    NSLog("AppLovin: attempted to show an ad that is not ready");
    return;
  }
  MAAd ad = *loaded_;
  loaded_.reset();
  auto weak = weakSelf<MAFullscreenAd>();
  bool shown = FullScreenAdStage::shared().present(
      {"applovin", maAdFormatName(format_), adUnit_}, [weak, ad] {
        DispatchQueue::main().async([weak, ad] {
          if (auto self = weak.lock()) {
            if (auto d = self->delegate()) d->didHideAd(ad);
          }
        });
      });
  DispatchQueue::main().async([weak, ad, shown] {
    auto self = weak.lock();
    if (!self) return;
    auto d = self->delegate();
    if (!d) return;
    if (shown) {
      d->didDisplayAd(ad);
    } else {
      d->didFailToDisplayAd(ad, MAError{-23, "Another ad is already on screen"});
    }
  });
}
