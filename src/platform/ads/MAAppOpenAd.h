#pragma once

#include "platform/ads/MAFullscreenAd.h"

class MAAppOpenAd : public MAFullscreenAd {
 public:
  explicit MAAppOpenAd(std::string adUnitIdentifier)
      : MAFullscreenAd(MAAdFormat::appOpen, std::move(adUnitIdentifier)) {}

 protected:
  const char* sdkClassName() const override { return "MAAppOpenAd"; }
};
