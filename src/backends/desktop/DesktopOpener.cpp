#include "backends/desktop/DesktopOpener.h"

#include <spawn.h>
#include <sys/wait.h>

#include <thread>
#include <vector>

#include "platform/foundation/Diagnostics.h"

extern char** environ;

namespace nimbrel::desktop {

bool openWithDesktop(const URL& url, const std::string& program) {
  std::string text = url.absoluteString();
  if (url.scheme() == "app-settings") {
    Diagnostics::report("There is no settings page to open on the desktop; change the answers with "
          "`nimbrel-library permissions allow|deny|reset photos|music`");
    return false;
  }
  if (url.scheme() == "ipod-library") return false;
  std::vector<char*> argv{const_cast<char*>(program.c_str()), text.data(), nullptr};
  pid_t pid = 0;
  if (::posix_spawnp(&pid, program.c_str(), nullptr, nullptr, argv.data(), environ) != 0) return false;
  std::thread([pid] {
    int status = 0;
    ::waitpid(pid, &status, 0);
  }).detach();
  return true;
}

}  // namespace nimbrel::desktop
