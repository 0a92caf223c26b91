#include "platform/services/NetworkReachability.h"

#include <mutex>

namespace {

class AlwaysReachable : public NetworkReachability {
 public:
  std::optional<unsigned> flags() const override { return reachable; }
};

std::mutex gMutex;
std::shared_ptr<NetworkReachability>& slot() {
  static std::shared_ptr<NetworkReachability> s;
  return s;
}

}  // namespace

std::shared_ptr<NetworkReachability> NetworkReachability::current() {
  std::lock_guard lock(gMutex);
  if (!slot()) slot() = std::make_shared<AlwaysReachable>();
  return slot();
}

void NetworkReachability::install(std::shared_ptr<NetworkReachability> source) {
  std::lock_guard lock(gMutex);
  slot() = std::move(source);
}
