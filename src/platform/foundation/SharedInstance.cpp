#include "platform/foundation/SharedInstance.h"

#include <vector>

namespace {
std::mutex gMutex;
std::vector<std::function<void()>>& resets() {
  static std::vector<std::function<void()>> r;
  return r;
}
}  // namespace

void SharedInstances::registerReset(std::function<void()> reset) {
  std::lock_guard lock(gMutex);
  resets().push_back(std::move(reset));
}

void SharedInstances::resetAll() {
  std::vector<std::function<void()>> copy;
  {
    std::lock_guard lock(gMutex);
    copy = resets();
  }
  for (auto& r : copy) r();
}
