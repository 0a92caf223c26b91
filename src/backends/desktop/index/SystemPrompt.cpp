#include "backends/desktop/index/SystemPrompt.h"

#include "platform/uikit/UIApplication.h"

namespace nimbrel::desktop {

bool presentSystemPrompt(const std::string& title, const std::optional<std::string>& message,
                         const std::vector<std::pair<std::string, UIAlertActionStyle>>& actions,
                         std::function<void(const std::string&)> answer) {
  auto window = UIApplication::sharedApplication().keyWindow();
  if (!window || !window->rootViewController()) return false;
  auto top = window->rootViewController();
  while (auto presented = top->presentedViewController()) top = presented;
  auto alert = std::make_shared<UIAlertController>(title, message, UIAlertControllerStyle::alert);
  auto shared = std::make_shared<std::function<void(const std::string&)>>(std::move(answer));
  for (const auto& [name, style] : actions) {
    alert->addAction({name, style, [shared, name = name](const UIAlertAction&) {
                        if (*shared) (*shared)(name);
                      }});
  }
  top->presentViewController(alert, true, nullptr);
  return true;
}

}  // namespace nimbrel::desktop
