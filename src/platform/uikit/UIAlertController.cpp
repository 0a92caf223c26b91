#include "platform/uikit/UIAlertController.h"

UIAlertController::UIAlertController(std::optional<std::string> title,
                                     std::optional<std::string> message,
                                     UIAlertControllerStyle style)
    : title_(std::move(title)), message_(std::move(message)), style_(style) {
  setModalPresentationStyle(UIModalPresentationStyle::custom);
}

void UIAlertController::addAction(UIAlertAction action) {
  actions_.push_back(std::move(action));
}

bool UIAlertController::pressActionWithTitle(const std::string& title) {
  for (const auto& action : actions_) {
    if (action.title != title) continue;
    auto pressed = action;
    auto self = strongSelf<UIAlertController>();
    dismissViewControllerAnimated(true, [self, pressed] {
      if (pressed.handler) pressed.handler(pressed);
    });
    return true;
  }
  return false;
}
