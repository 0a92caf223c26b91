#pragma once

#include <functional>
#include <memory>
#include <string>

// What answers the Google Mobile Ads SDK: the simulated network or the desktop's demo network.
class GoogleAdsNetwork {
 public:
  virtual ~GoogleAdsNetwork() = default;
  virtual void start(std::function<void()> done) = 0;
  // True for a fill; answered later on the main queue.
  virtual void requestInterstitial(const std::string& adUnit, std::function<void(bool)> answer) = 0;
  virtual void record(const std::string& call) {}

  static std::shared_ptr<GoogleAdsNetwork> current();
  static void install(std::shared_ptr<GoogleAdsNetwork> network);
};
