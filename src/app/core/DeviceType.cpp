#include "app/core/DeviceType.h"

namespace nimbrel {

std::string_view rawValue(DeviceType type) {
  switch (type) {
    case DeviceType::unspecified: return "unspecified";
    case DeviceType::iphone: return "iphone";
    case DeviceType::ipad: return "ipad";
  }
  return "unspecified";
}

}  // namespace nimbrel
