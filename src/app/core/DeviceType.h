#pragma once

#include <string_view>

namespace nimbrel {

enum class DeviceType { unspecified, iphone, ipad };

std::string_view rawValue(DeviceType type);

}  // namespace nimbrel
