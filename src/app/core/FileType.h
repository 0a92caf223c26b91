#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace nimbrel {

// The kind of a remembered item. The order of the cases is fixed.
enum class FileType { docs, photo, video, music };

std::string_view rawValue(FileType type);
// No value for any string but the four raw values.
std::optional<FileType> fileTypeFromRawValue(std::string_view raw);

}  // namespace nimbrel
