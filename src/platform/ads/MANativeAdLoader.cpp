#include "platform/ads/MANativeAdLoader.h"

#include "platform/ads/AppLovinNetwork.h"

void MANativeAdLoader::loadAd() {
  auto network = AppLovinNetwork::current();
  network->record("MANativeAdLoader.loadAd " + adUnit_);
  auto weak = weakSelf<MANativeAdLoader>();
  network->requestAd(MAAdFormat::native, adUnit_, [weak](std::optional<MAAd> ad) {
    auto self = weak.lock();
    if (!self) return;
    auto delegate = self->delegate_.lock();
    if (!delegate) return;
    if (ad) {
      delegate->didLoadNativeAd(nullptr, *ad);
    } else {
      delegate->didFailToLoadNativeAdForAdUnitIdentifier(self->adUnit_, MAError{});
    }
  });
}

bool MANativeAdLoader::renderNativeAdView(const std::shared_ptr<MANativeAdView>& view,
                                          const MAAd& ad) {
  AppLovinNetwork::current()->record("MANativeAdLoader.renderNativeAdView " + adUnit_);
  if (!view || !view->binder()) return false;
  view->render(ad);
  return true;
}
