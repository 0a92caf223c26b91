#include "platform/foundation/RunLoop.h"

#include <atomic>

#include "platform/foundation/FatalError.h"

namespace {
std::atomic<RunLoop*> gCurrent{nullptr};
}

RunLoop& RunLoop::current() {
  RunLoop* loop = gCurrent.load(std::memory_order_acquire);
  if (!loop) fatalError("no run loop is installed");
  return *loop;
}

bool RunLoop::hasCurrent() {
  return gCurrent.load(std::memory_order_acquire) != nullptr;
}

RunLoop* RunLoop::install(RunLoop* loop) {
  return gCurrent.exchange(loop, std::memory_order_acq_rel);
}
