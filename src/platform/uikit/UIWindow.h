#pragma once

#include <memory>
#include <vector>

#include "platform/uikit/UIView.h"

class UIViewController;

class UIWindow : public UIView {
 public:
  using UIView::UIView;
  ~UIWindow() override;
  const char* className() const override { return "UIWindow"; }

  std::shared_ptr<UIViewController> rootViewController() const { return root_; }
  void setRootViewController(std::shared_ptr<UIViewController> root);
  // Shows the window: its root screen appears.
  void makeKeyAndVisible();
  bool isKeyWindow() const { return visible_; }

  // Every live window, oldest first.
  static std::vector<std::shared_ptr<UIWindow>> allWindows();

 private:
  std::shared_ptr<UIViewController> root_;
  bool visible_ = false;
};
