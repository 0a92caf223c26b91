#include "backends/sim/SimAppLovinNetwork.h"

#include "platform/foundation/DispatchQueue.h"

namespace nimbrel::sim {

SimAppLovinNetwork::SimAppLovinNetwork(std::string interstitial, std::string native,
                                       std::string appOpen, std::shared_ptr<SimCallLog> log)
    : interstitial_(std::move(interstitial)), native_(std::move(native)),
      appOpen_(std::move(appOpen)), log_(std::move(log)) {}

void SimAppLovinNetwork::initialize(std::function<void()> done) {
  DispatchQueue::main().async(std::move(done));
}

bool SimAppLovinNetwork::fills(MAAdFormat format) const {
  switch (format) {
    case MAAdFormat::interstitial: return interstitial_ != "nofill";
    case MAAdFormat::native: return native_ == "fill";
    case MAAdFormat::appOpen: return appOpen_ == "fill";
  }
  return false;
}

void SimAppLovinNetwork::requestAd(MAAdFormat format, const std::string& adUnit,
                                   std::function<void(std::optional<MAAd>)> answer) {
  std::optional<MAAd> ad;
  if (fills(format)) {
    ++served_;
    ad = MAAd{format, adUnit, "Simulated network", "Sample ad " + std::to_string(served_),
              "An advertisement from the simulated network.", "Open"};
  }
  DispatchQueue::main().async([answer = std::move(answer), ad] { answer(ad); });
}

bool SimAppLovinNetwork::hasPreloadedAd(MAAdFormat format) const {
  return format == MAAdFormat::interstitial && interstitial_ == "ready";
}

}  // namespace nimbrel::sim
