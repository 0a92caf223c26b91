#include "platform/ads/AppLovinNetwork.h"

#include <mutex>

#include "platform/foundation/DispatchQueue.h"

namespace {

// With nothing installed the SDK behaves as a network without fill.
class NoFillNetwork : public AppLovinNetwork {
 public:
  void initialize(std::function<void()> done) override { DispatchQueue::main().async(std::move(done)); }
  void requestAd(MAAdFormat, const std::string&,
                 std::function<void(std::optional<MAAd>)> answer) override {
    DispatchQueue::main().async([answer = std::move(answer)] { answer(std::nullopt); });
  }
};

std::mutex gMutex;
std::shared_ptr<AppLovinNetwork>& slot() {
  static std::shared_ptr<AppLovinNetwork> n;
  return n;
}

}  // namespace

std::shared_ptr<AppLovinNetwork> AppLovinNetwork::current() {
  std::lock_guard lock(gMutex);
  if (!slot()) slot() = std::make_shared<NoFillNetwork>();
  return slot();
}

void AppLovinNetwork::install(std::shared_ptr<AppLovinNetwork> network) {
  std::lock_guard lock(gMutex);
  slot() = std::move(network);
}
