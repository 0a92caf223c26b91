#include "platform/uikit/UIColor.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

std::string UIColor::hexString() const {
  auto byte = [](double c) { return static_cast<int>(std::lround(std::clamp(c, 0.0, 1.0) * 255.0)); };
  char buffer[8];
  std::snprintf(buffer, sizeof buffer, "#%02x%02x%02x", byte(red), byte(green), byte(blue));
  return buffer;
}
