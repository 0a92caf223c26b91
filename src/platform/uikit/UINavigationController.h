#pragma once

#include <memory>
#include <vector>

#include "platform/uikit/UIViewController.h"

// A stack of screens. Pushes and pops move the appearance of the top screen when the stack itself
// is on screen.
class UINavigationController : public UIViewController {
 public:
  UINavigationController() = default;
  const char* className() const override { return "UINavigationController"; }

  static std::shared_ptr<UINavigationController> withRoot(std::shared_ptr<UIViewController> root);

  const std::vector<std::shared_ptr<UIViewController>>& viewControllers() const { return stack_; }
  std::shared_ptr<UIViewController> topViewController() const;
  // The top screen, or what it presents.
  std::shared_ptr<UIViewController> visibleViewController() const;

  void pushViewController(const std::shared_ptr<UIViewController>& controller, bool animated);
  // No value when only the root is left.
  std::shared_ptr<UIViewController> popViewControllerAnimated(bool animated);
  std::vector<std::shared_ptr<UIViewController>> popToRootViewControllerAnimated(bool animated);
  void setViewControllers(std::vector<std::shared_ptr<UIViewController>> controllers, bool animated);

  bool isNavigationBarHidden() const { return navigationBarHidden_; }
  void setNavigationBarHidden(bool hidden, bool animated);

 protected:
  std::vector<std::shared_ptr<UIViewController>> childrenForAppearance() const override;

 private:
  // Moves appearance from `from` to `to`, completing one turn later.
  void transition(const std::shared_ptr<UIViewController>& from,
                  const std::shared_ptr<UIViewController>& to, bool animated,
                  std::vector<std::shared_ptr<UIViewController>> released);
  bool onScreen() const;
  std::vector<std::shared_ptr<UIViewController>> stack_;
  bool navigationBarHidden_ = false;
};
