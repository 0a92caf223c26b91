#include "app/ads/GoogleBannerAds.h"

namespace nimbrel {

void GoogleBannerAds::bannerViewDidReceiveAd(GADBannerView&) {
  if (view) view->setHidden(false);
}

void GoogleBannerAds::bannerViewDidFailToReceiveAdWithError(GADBannerView&, const GADError&) {
  if (view) view->setHidden(true);
}

}  // namespace nimbrel
