#include "backends/sim/SimGoogleAdsNetwork.h"

#include "platform/foundation/DispatchQueue.h"

namespace nimbrel::sim {

void SimGoogleAdsNetwork::start(std::function<void()> done) {
  DispatchQueue::main().async(std::move(done));
}

void SimGoogleAdsNetwork::requestInterstitial(const std::string&, std::function<void(bool)> answer) {
  bool fill = interstitial_ == "fill";
  DispatchQueue::main().async([answer = std::move(answer), fill] { answer(fill); });
}

}  // namespace nimbrel::sim
