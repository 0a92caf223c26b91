#include "platform/foundation/NSTimeZone.h"

#include <mutex>
#include <utility>

namespace {
std::mutex mutex;
std::string& zoneName() {
  static std::string value = "UTC";
  return value;
}
}  // namespace

std::string NSTimeZone::localTimeZone() {
  std::lock_guard lock(mutex);
  return zoneName();
}

void NSTimeZone::setLocalTimeZoneName(std::string name) {
  std::lock_guard lock(mutex);
  zoneName() = std::move(name);
}
