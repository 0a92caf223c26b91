#include "platform/foundation/NSPathUtilities.h"

#include <mutex>

namespace {
std::mutex gMutex;
std::string& home() {
  static std::string h;
  return h;
}
}  // namespace

std::string NSHomeDirectory() {
  std::lock_guard lock(gMutex);
  return home();
}

void setApplicationHomeDirectory(std::string path) {
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  std::lock_guard lock(gMutex);
  home() = std::move(path);
}

std::vector<std::string> NSSearchPathForDirectoriesInDomains(NSSearchPathDirectory directory,
                                                             NSSearchPathDomainMask domain,
                                                             bool expandTilde) {
  std::string base = NSHomeDirectory();
  if (base.empty() || domain != NSUserDomainMask) return {};
  if (!expandTilde) base = "~";
  switch (directory) {
    case NSDocumentDirectory: return {base + "/Documents"};
    case NSLibraryDirectory: return {base + "/Library"};
    case NSCachesDirectory: return {base + "/Library/Caches"};
    case NSApplicationSupportDirectory: return {base + "/Library/Application Support"};
  }
  return {};
}
