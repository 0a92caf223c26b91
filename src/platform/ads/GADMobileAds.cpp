#include "platform/ads/GADMobileAds.h"

#include "platform/ads/GoogleAdsNetwork.h"

GADMobileAds& GADMobileAds::sharedInstance() {
  static GADMobileAds ads;
  return ads;
}

void GADMobileAds::startWithCompletionHandler(
    std::function<void(const GADInitializationStatus&)> handler) {
  GoogleAdsNetwork::current()->record("GADMobileAds.start");
  GoogleAdsNetwork::current()->start([this, handler = std::move(handler)] {
    started_ = true;
    if (handler) handler(GADInitializationStatus{});
  });
}
