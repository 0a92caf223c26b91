#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/uikit/UIViewController.h"

enum class UIAlertActionStyle { defaultStyle = 0, cancel = 1, destructive = 2 };
enum class UIAlertControllerStyle { actionSheet = 0, alert = 1 };

struct UIAlertAction {
  std::string title;
  UIAlertActionStyle style = UIAlertActionStyle::defaultStyle;
  std::function<void(const UIAlertAction&)> handler;
};

// An alert as state: presented like any screen, answered by pressing one of its actions.
class UIAlertController : public UIViewController {
 public:
  UIAlertController(std::optional<std::string> title, std::optional<std::string> message,
                    UIAlertControllerStyle style);
  const char* className() const override { return "UIAlertController"; }

  const std::optional<std::string>& alertTitle() const { return title_; }
  const std::optional<std::string>& message() const { return message_; }
  UIAlertControllerStyle preferredStyle() const { return style_; }
  void addAction(UIAlertAction action);
  const std::vector<UIAlertAction>& actions() const { return actions_; }

  // The user presses the action with this title: the alert goes away, then its handler runs.
  // False when there is no such action.
  bool pressActionWithTitle(const std::string& title);

 private:
  std::optional<std::string> title_;
  std::optional<std::string> message_;
  UIAlertControllerStyle style_;
  std::vector<UIAlertAction> actions_;
};
