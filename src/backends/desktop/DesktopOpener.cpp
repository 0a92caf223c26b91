#include "backends/desktop/DesktopOpener.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>
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
  return runDetached({program, text});
}

bool runDetached(const std::vector<std::string>& args) {
  if (args.empty()) return false;
  std::vector<char*> argv;
  for (const auto& a : args) argv.push_back(const_cast<char*>(a.c_str()));
  argv.push_back(nullptr);
  pid_t pid = 0;
  if (::posix_spawnp(&pid, args.front().c_str(), nullptr, nullptr, argv.data(), environ) != 0) return false;
  std::thread([pid] {
    int status = 0;
    ::waitpid(pid, &status, 0);
  }).detach();
  return true;
}

bool programOnPath(const std::string& program) {
  const char* path = std::getenv("PATH");
  std::string_view rest = path ? path : "";
  while (!rest.empty()) {
    auto colon = rest.find(':');
    std::string dir(rest.substr(0, colon));
    rest = colon == std::string_view::npos ? std::string_view{} : rest.substr(colon + 1);
    if (!dir.empty() && ::access((dir + "/" + program).c_str(), X_OK) == 0) return true;
  }
  return false;
}

}  // namespace nimbrel::desktop
