#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/uikit/UIAlertController.h"

namespace nimbrel::desktop {

// The platform's own question to the user: an alert on the key window's top screen. Main thread
// only. `answer` gets the title of the action pressed. False when no window is there to ask in.
bool presentSystemPrompt(const std::string& title, const std::optional<std::string>& message,
                         const std::vector<std::pair<std::string, UIAlertActionStyle>>& actions,
                         std::function<void(const std::string& chosen)> answer);

}  // namespace nimbrel::desktop
