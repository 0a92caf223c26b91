#pragma once

#include <memory>
#include <string>

#include "backends/sim/SimCallLog.h"
#include "platform/ads/AppLovinNetwork.h"

namespace nimbrel::sim {

// AppLovin as the fixture says: each format fills or not; a "ready" interstitial is there before
// any load. Answers come one main-queue turn after the request.
class SimAppLovinNetwork : public AppLovinNetwork {
 public:
  SimAppLovinNetwork(std::string interstitial, std::string native, std::string appOpen,
                     std::shared_ptr<SimCallLog> log);
  void initialize(std::function<void()> done) override;
  void requestAd(MAAdFormat format, const std::string& adUnit,
                 std::function<void(std::optional<MAAd>)> answer) override;
  bool hasPreloadedAd(MAAdFormat format) const override;
  void record(const std::string& call) override { log_->record(call); }

 private:
  bool fills(MAAdFormat format) const;
  std::string interstitial_, native_, appOpen_;
  std::shared_ptr<SimCallLog> log_;
  int served_ = 0;
};

}  // namespace nimbrel::sim
