#pragma once

#include <memory>
#include <string>

#include "platform/ads/MANativeAdDelegate.h"
#include "platform/ads/MANativeAdView.h"
#include "platform/foundation/NSObject.h"

class MANativeAdLoader : public NSObject {
 public:
  explicit MANativeAdLoader(std::string adUnitIdentifier) : adUnit_(std::move(adUnitIdentifier)) {}
  void setNativeAdDelegate(std::weak_ptr<MANativeAdDelegate> delegate) {
    delegate_ = std::move(delegate);
  }
  const std::string& adUnitIdentifier() const { return adUnit_; }
  // Asks the network; the delegate hears of the ad (manual layout: no view) or of no fill.
  void loadAd();
  // Puts a delivered ad into a bound view. False when the view was never bound.
  bool renderNativeAdView(const std::shared_ptr<MANativeAdView>& view, const MAAd& ad);

 private:
  std::string adUnit_;
  std::weak_ptr<MANativeAdDelegate> delegate_;
};
