#pragma once

#include <memory>

#include "platform/ads/GADBannerView.h"
#include "platform/ads/GADInterstitialAd.h"
#include "platform/foundation/NSObject.h"

namespace nimbrel {

// Shows its banner while an ad stands in it. Nothing loads one.
class GoogleBannerAds : public NSObject, public GADBannerViewDelegate {
 public:
  std::shared_ptr<GADBannerView> view;

  void bannerViewDidReceiveAd(GADBannerView& bannerView) override;
  void bannerViewDidFailToReceiveAdWithError(GADBannerView& bannerView, const GADError& error) override;
};

}  // namespace nimbrel
