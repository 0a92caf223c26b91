#include "platform/ads/GoogleAdsNetwork.h"

#include <mutex>

#include "platform/foundation/DispatchQueue.h"

namespace {
class NoFillGoogle : public GoogleAdsNetwork {
 public:
  void start(std::function<void()> done) override { DispatchQueue::main().async(std::move(done)); }
  void requestInterstitial(const std::string&, std::function<void(bool)> answer) override {
    DispatchQueue::main().async([answer = std::move(answer)] { answer(false); });
  }
};
std::mutex gMutex;
std::shared_ptr<GoogleAdsNetwork>& slot() {
  static std::shared_ptr<GoogleAdsNetwork> n;
  return n;
}
}  // namespace

std::shared_ptr<GoogleAdsNetwork> GoogleAdsNetwork::current() {
  std::lock_guard lock(gMutex);
  if (!slot()) slot() = std::make_shared<NoFillGoogle>();
  return slot();
}

void GoogleAdsNetwork::install(std::shared_ptr<GoogleAdsNetwork> network) {
  std::lock_guard lock(gMutex);
  slot() = std::move(network);
}
