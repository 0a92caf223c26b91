#pragma once

#include <memory>
#include <string>

#include "platform/ads/GADInterstitialAd.h"

// One delivered Google native ad.
struct GADNativeAd {};

class GADAdLoader;

class GADAdLoaderDelegate {
 public:
  virtual ~GADAdLoaderDelegate() = default;
  virtual void adLoaderDidFailToReceiveAdWithError(GADAdLoader& loader, const GADError& error) = 0;
};

class GADNativeAdLoaderDelegate {
 public:
  virtual ~GADNativeAdLoaderDelegate() = default;
  virtual void adLoaderDidReceiveNativeAd(GADAdLoader& loader, const GADNativeAd& ad) = 0;
};

// Loads Google native ads for a unit and tells its delegate.
class GADAdLoader {
 public:
  explicit GADAdLoader(std::string adUnitID) : adUnitID_(std::move(adUnitID)) {}
  const std::string& adUnitID() const { return adUnitID_; }
  std::string description() const { return "<GADAdLoader: " + adUnitID_ + ">"; }
  std::weak_ptr<GADAdLoaderDelegate> delegate;

 private:
  std::string adUnitID_;
};
