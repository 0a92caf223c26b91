#include "platform/foundation/NSLocale.h"

#include <mutex>
#include <utility>

namespace {
std::mutex mutex;
std::string& identifier() {
  static std::string value = "en_US";
  return value;
}
}  // namespace

std::string NSLocale::currentLocale() {
  std::lock_guard lock(mutex);
  return identifier();
}

void NSLocale::setCurrentLocaleIdentifier(std::string newIdentifier) {
  std::lock_guard lock(mutex);
  identifier() = std::move(newIdentifier);
}
