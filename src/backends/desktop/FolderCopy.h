#pragma once

#include <optional>
#include <string>

namespace nimbrel::desktop {

// Copies files into a folder without ever replacing what is there: a name already taken becomes
// "name (2).ext", "name (3).ext", ... The name is claimed with an exclusive create, so another
// program writing at the same moment is not overwritten either.
class FolderCopy {
 public:
  // The path written, or nullopt when the file could not be read or the folder written.
  static std::optional<std::string> copyInto(const std::string& folder, const std::string& file,
                                             const std::string& name = {});
  // The n-th candidate for `name`: n = 1 is the name itself, then "stem (n).ext".
  static std::string candidate(const std::string& name, int n);
};

}  // namespace nimbrel::desktop
