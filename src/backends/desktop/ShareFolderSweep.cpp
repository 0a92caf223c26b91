#include "backends/desktop/ShareFolderSweep.h"

#include <sys/stat.h>

#include <filesystem>

#include "platform/foundation/Diagnostics.h"

namespace nimbrel::desktop {

namespace fs = std::filesystem;

int ShareFolderSweep::removeOld(const std::string& parent, std::chrono::system_clock::time_point now,
                                std::chrono::seconds keptFor) {
  const auto before = std::chrono::system_clock::to_time_t(now - keptFor);
  int removed = 0;
  std::error_code ec;
  for (fs::directory_iterator it(parent, ec), end; !ec && it != end; it.increment(ec)) {
    const std::string name = it->path().filename().string();
    struct stat st;
    // Not followed: a link by that name is nobody's share folder to empty.
    if (name.rfind(kPrefix, 0) != 0 || ::lstat(it->path().c_str(), &st) != 0 || !S_ISDIR(st.st_mode) ||
        st.st_mtime >= before) {
      continue;
    }
    std::error_code removing;
    fs::remove_all(it->path(), removing);
    if (removing) {
      Diagnostics::report("Could not remove the old share folder " + it->path().string() + ": " + removing.message());
    } else {
      ++removed;
    }
  }
  return removed;
}

}  // namespace nimbrel::desktop
