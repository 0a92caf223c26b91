#pragma once

#include <functional>
#include <memory>

#include "app/ads/GoogleNativeAdsCustomeViews.h"
#include "platform/ads/GADAdLoader.h"
#include "platform/foundation/NSObject.h"

namespace nimbrel {

// Waits for Google native ads from a loader that nothing creates; its four layouts are built
// from their nibs when it is made.
class GoogleNativeAds : public NSObject, public GADNativeAdLoaderDelegate, public GADAdLoaderDelegate {
 public:
  GoogleNativeAds();

  std::function<void(const GADNativeAd&)> completion;
  std::shared_ptr<GADAdLoader> adLoader;
  std::shared_ptr<GoogleNativeAdsCustomeView1> googleNativeAdsCustomeView1;
  std::shared_ptr<GoogleNativeAdsCustomeView2> googleNativeAdsCustomeView2;
  std::shared_ptr<GoogleNativeAdsCustomeView4> googleNativeAdsCustomeView4;
  std::shared_ptr<GoogleNativeAdsCustomeView3> googleNativeAdsCustomeView3;

  void adLoaderDidReceiveNativeAd(GADAdLoader& loader, const GADNativeAd& ad) override;
  void adLoaderDidFailToReceiveAdWithError(GADAdLoader& loader, const GADError& error) override;
};

}  // namespace nimbrel
