#pragma once

#include <string>
#include <string_view>

namespace nimbrel::desktop {

// "file:///home/a/My%20Photo.jpg": the URI other desktop programs write for a path, so that the
// shared thumbnail cache (named by the URI's MD5) is the same file for all of them.
std::string fileUriForPath(std::string_view absolutePath);
// A path for a .trashinfo `Path=` key: every byte but unreserved characters and '/' escaped.
std::string escapeTrashPath(std::string_view path);
// Undoes either escaping.
std::string unescapeUri(std::string_view text);

}  // namespace nimbrel::desktop
