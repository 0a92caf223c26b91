#include "platform/uikit/UIGestureRecognizer.h"

#include "platform/foundation/DispatchQueue.h"
#include "platform/uikit/UIView.h"

UIGestureRecognizer::UIGestureRecognizer(std::weak_ptr<UIResponder> target, std::string action) {
  addTarget(std::move(target), std::move(action));
}

void UIGestureRecognizer::addTarget(std::weak_ptr<UIResponder> target, std::string action) {
  targets_.emplace_back(std::move(target), std::move(action));
}

bool UIGestureRecognizer::recognize(UIGestureRecognizerState state, CGPoint location) {
  if (!enabled_ || view_.expired()) return false;
  ++recognitions_;
  if (auto other = mustFail_.lock(); other && other->isEnabled() && other->view()) {
    unsigned otherBefore = other->recognitions_;
    auto self = std::static_pointer_cast<UIGestureRecognizer>(shared_from_this());
    DispatchQueue::main().asyncAfter(kDoubleTapWait, [self, other, otherBefore, state, location] {
      if (other->recognitions_ != otherBefore) return;  // the other one won
      self->send(state, location);
    });
    return true;
  }
  send(state, location);
  return true;
}

void UIGestureRecognizer::send(UIGestureRecognizerState state, CGPoint location) {
  state_ = state;
  location_ = location;
  auto self = shared_from_this();
  auto targets = targets_;  // an action may add or remove targets
  for (auto& [weakTarget, action] : targets) {
    if (auto target = weakTarget.lock()) target->performAction(action, self);
  }
}
