#include "platform/uikit/UINavigationController.h"

#include <algorithm>

#include "platform/foundation/DispatchQueue.h"

std::shared_ptr<UINavigationController> UINavigationController::withRoot(
    std::shared_ptr<UIViewController> root) {
  auto nav = std::make_shared<UINavigationController>();
  nav->setViewControllers({std::move(root)}, false);
  return nav;
}

std::shared_ptr<UIViewController> UINavigationController::topViewController() const {
  return stack_.empty() ? nullptr : stack_.back();
}

std::shared_ptr<UIViewController> UINavigationController::visibleViewController() const {
  if (auto p = presentedViewController()) return p;
  return topViewController();
}

bool UINavigationController::onScreen() const {
  return appearance() == Appearance::appeared || appearance() == Appearance::appearing;
}

std::vector<std::shared_ptr<UIViewController>> UINavigationController::childrenForAppearance()
    const {
  if (auto top = topViewController()) return {top};
  return {};
}

void UINavigationController::transition(const std::shared_ptr<UIViewController>& from,
                                        const std::shared_ptr<UIViewController>& to, bool animated,
                                        std::vector<std::shared_ptr<UIViewController>> released) {
  notifyChanged();
  // Popped screens keep their navigation controller through their disappearance and stay alive
  // until their transition has ended.
  auto detach = [self = strongSelf<UINavigationController>()](const std::vector<std::shared_ptr<UIViewController>>& gone) {
    for (const auto& c : gone) {
      if (c->parentViewController() == self &&
          std::find(self->stack_.begin(), self->stack_.end(), c) == self->stack_.end()) {
        c->setParent(nullptr);
      }
    }
  };
  if (!onScreen()) {
    detach(released);
    return;
  }
  if (to) to->loadViewIfNeeded();
  if (from && from != to) from->beginAppearanceTransition(false, animated);
  if (to && from != to) to->beginAppearanceTransition(true, animated);
  DispatchQueue::main().async([from, to, released = std::move(released), detach] {
    if (from && from != to) from->endAppearanceTransition();
    if (to && from != to) to->endAppearanceTransition();
    detach(released);
  });
}

void UINavigationController::pushViewController(const std::shared_ptr<UIViewController>& controller,
                                                bool animated) {
  if (!controller) return;
  for (const auto& c : stack_) {
    if (c == controller) return;  // the platform refuses to push a controller twice
  }
  auto from = topViewController();
  stack_.push_back(controller);
  controller->setParent(strongSelf<UIViewController>());
  transition(from, controller, animated, {});
}

std::shared_ptr<UIViewController> UINavigationController::popViewControllerAnimated(bool animated) {
  if (stack_.size() <= 1) return nullptr;
  auto popped = stack_.back();
  stack_.pop_back();
  transition(popped, topViewController(), animated, {popped});
  return popped;
}

std::vector<std::shared_ptr<UIViewController>> UINavigationController::popToRootViewControllerAnimated(
    bool animated) {
  if (stack_.size() <= 1) return {};
  auto from = topViewController();
  std::vector<std::shared_ptr<UIViewController>> popped(stack_.begin() + 1, stack_.end());
  stack_.resize(1);
  transition(from, topViewController(), animated, popped);
  return popped;
}

void UINavigationController::setViewControllers(
    std::vector<std::shared_ptr<UIViewController>> controllers, bool animated) {
  auto from = topViewController();
  auto old = std::move(stack_);
  stack_ = std::move(controllers);
  for (const auto& c : stack_) c->setParent(strongSelf<UIViewController>());
  transition(from, topViewController(), animated, std::move(old));
}

void UINavigationController::setNavigationBarHidden(bool hidden, bool animated) {
  navigationBarHidden_ = hidden;
  notifyChanged();
}
