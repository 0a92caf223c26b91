#pragma once

#include <string>
#include <string_view>

namespace nimbrel {

// The image asset for a file-name extension, compared byte for byte (case-sensitive) from the top
// of the table; anything not in it is "file_other", and no extension at all looks like a folder.
std::string iconName(std::string_view extension);

}  // namespace nimbrel
