#pragma once

#include <memory>
#include <string>

#include "backends/sim/SimCallLog.h"
#include "platform/ads/GoogleAdsNetwork.h"

namespace nimbrel::sim {

class SimGoogleAdsNetwork : public GoogleAdsNetwork {
 public:
  SimGoogleAdsNetwork(std::string interstitial, std::shared_ptr<SimCallLog> log)
      : interstitial_(std::move(interstitial)), log_(std::move(log)) {}
  void start(std::function<void()> done) override;
  void requestInterstitial(const std::string& adUnit, std::function<void(bool)> answer) override;
  void record(const std::string& call) override { log_->record(call); }

 private:
  std::string interstitial_;
  std::shared_ptr<SimCallLog> log_;
};

}  // namespace nimbrel::sim
