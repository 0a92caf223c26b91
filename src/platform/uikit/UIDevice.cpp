#include "platform/uikit/UIDevice.h"

#include <array>
#include <cstdlib>

UIDevice& UIDevice::currentDevice() {
  static UIDevice device;
  return device;
}

bool UIDevice::isOperatingSystemAtLeastVersion(int major, int minor, int patch) const {
  std::array<long, 3> have{0, 0, 0};
  const char* p = systemVersion_.c_str();
  for (size_t i = 0; i < have.size() && *p; ++i) {
    char* end = nullptr;
    have[i] = std::strtol(p, &end, 10);
    p = (*end == '.') ? end + 1 : end;
    if (end == p && *p != '\0') break;
  }
  std::array<long, 3> want{major, minor, patch};
  return have >= want;
}

void UIDevice::configure(UIUserInterfaceIdiom idiom, std::string systemVersion) {
  idiom_ = idiom;
  systemVersion_ = std::move(systemVersion);
}
