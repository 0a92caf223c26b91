#pragma once

#include "platform/ads/MAFullscreenAd.h"

class MAInterstitialAd : public MAFullscreenAd {
 public:
  explicit MAInterstitialAd(std::string adUnitIdentifier)
      : MAFullscreenAd(MAAdFormat::interstitial, std::move(adUnitIdentifier)) {}

 protected:
  const char* sdkClassName() const override { return "MAInterstitialAd"; }
};
