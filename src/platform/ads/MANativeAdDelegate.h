#pragma once

#include <memory>
#include <string>

#include "platform/ads/MAAd.h"

class MANativeAdView;

class MANativeAdDelegate {
 public:
  virtual ~MANativeAdDelegate() = default;
  virtual void didLoadNativeAd(const std::shared_ptr<MANativeAdView>& view, const MAAd& ad) = 0;
  virtual void didFailToLoadNativeAdForAdUnitIdentifier(const std::string& adUnit,
                                                        const MAError& error) = 0;
  virtual void didClickNativeAd(const MAAd& ad) = 0;
};
