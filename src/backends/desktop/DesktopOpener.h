#pragma once

#include <string>

#include "platform/foundation/URL.h"

namespace nimbrel::desktop {

// Hands a URL to the desktop: `program` (xdg-open) started directly, no shell in between, and
// reaped in the background. False when the program could not be started or the URL is one the
// desktop has no page for (the phone's settings page).
bool openWithDesktop(const URL& url, const std::string& program = "xdg-open");

}  // namespace nimbrel::desktop
