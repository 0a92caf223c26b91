#include "platform/uikit/UINib.h"

#include <map>
#include <mutex>

namespace {
std::mutex gMutex;
std::map<std::string, UINib::Factory>& nibs() {
  static std::map<std::string, UINib::Factory> n;
  return n;
}
}  // namespace

std::shared_ptr<UINib> UINib::nibWithNibName(const std::string& name) {
  std::lock_guard lock(gMutex);
  auto it = nibs().find(name);
  if (it == nibs().end()) return nullptr;
  return std::make_shared<UINib>(name, it->second);
}

std::vector<std::shared_ptr<NSObject>> UINib::instantiateWithOwner(
    const std::shared_ptr<NSObject>&) const {
  return factory_ ? factory_() : std::vector<std::shared_ptr<NSObject>>{};
}

void UINib::registerNib(const std::string& name, Factory factory) {
  std::lock_guard lock(gMutex);
  nibs()[name] = std::move(factory);
}

void UINib::unregisterAll() {
  std::lock_guard lock(gMutex);
  nibs().clear();
}
