#pragma once

#include <string>
#include <vector>

#include "platform/foundation/URL.h"

namespace nimbrel::desktop {

// Hands a URL to the desktop: `program` (xdg-open) started directly, no shell in between, and
// reaped in the background. False when the program could not be started or the URL is one the
// desktop has no page for (the phone's settings page).
bool openWithDesktop(const URL& url, const std::string& program = "xdg-open");
// Starts argv[0] (looked up on PATH) with those arguments and reaps it in the background; false
// when it could not be started.
bool runDetached(const std::vector<std::string>& argv);
// Whether `program` is an executable file in one of PATH's folders.
bool programOnPath(const std::string& program);

}  // namespace nimbrel::desktop
