#include "platform/uikit/UIGestureRecognizer.h"

#include "platform/uikit/UIView.h"

UIGestureRecognizer::UIGestureRecognizer(std::weak_ptr<UIResponder> target, std::string action) {
  addTarget(std::move(target), std::move(action));
}

void UIGestureRecognizer::addTarget(std::weak_ptr<UIResponder> target, std::string action) {
  targets_.emplace_back(std::move(target), std::move(action));
}

bool UIGestureRecognizer::recognize(UIGestureRecognizerState state, CGPoint location) {
  if (!enabled_ || view_.expired()) return false;
  state_ = state;
  location_ = location;
  auto self = shared_from_this();
  auto targets = targets_;  // an action may add or remove targets
  for (auto& [weakTarget, action] : targets) {
    if (auto target = weakTarget.lock()) target->performAction(action, self);
  }
  return true;
}
