#include "platform/uikit/UIColorCatalog.h"

#include <map>
#include <mutex>

namespace {
std::mutex gMutex;
std::map<std::string, UIColor>& colors() {
  static std::map<std::string, UIColor> c;
  return c;
}
}  // namespace

std::optional<UIColor> UIColorCatalog::colorNamed(const std::string& name) {
  std::lock_guard lock(gMutex);
  auto it = colors().find(name);
  if (it == colors().end()) return std::nullopt;
  return it->second;
}

void UIColorCatalog::registerColor(const std::string& name, UIColor color) {
  std::lock_guard lock(gMutex);
  colors()[name] = color;
}

void UIColorCatalog::reset() {
  std::lock_guard lock(gMutex);
  colors().clear();
}
