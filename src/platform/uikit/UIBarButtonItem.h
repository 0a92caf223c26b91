#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/uikit/UIResponder.h"

// A navigation-bar button: a system item (17 play, 18 pause, ...) or a title, with its action.
class UIBarButtonItem : public UIResponder {
 public:
  UIBarButtonItem(int systemItem, std::weak_ptr<UIResponder> target, std::string action)
      : systemItem_(systemItem), target_(std::move(target)), action_(std::move(action)) {}
  int systemItem() const { return systemItem_; }
  const std::string& action() const { return action_; }
  // A press: the target gets the action with the item as sender.
  void press();

  static constexpr int play = 17;
  static constexpr int pause = 18;

 private:
  int systemItem_;
  std::weak_ptr<UIResponder> target_;
  std::string action_;
};
