#include "backends/desktop/DesktopDocumentPicker.h"

#include <sys/stat.h>

namespace nimbrel::desktop {

Result<URL> DesktopDocumentPicker::handOver(const std::string& path) {
  struct stat st;
  if (path.empty() || path.front() != '/' || ::stat(path.c_str(), &st) != 0) {
    return Result<URL>::failure("the picker offers no \"" + path + "\" (give the absolute path of an existing file)");
  }
  return URL::fileURLWithPath(path, S_ISDIR(st.st_mode));
}

}  // namespace nimbrel::desktop
