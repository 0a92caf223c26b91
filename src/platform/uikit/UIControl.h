#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/uikit/UIView.h"

enum class UIControlContentHorizontalAlignment {
  center = 0, left = 1, right = 2, fill = 3, leading = 4, trailing = 5
};

enum class UIControlEvents : unsigned { touchUpInside = 1u << 6, valueChanged = 1u << 12 };

// A view that sends target-action pairs for its events.
class UIControl : public UIView {
 public:
  using UIView::UIView;
  const char* className() const override { return "UIControl"; }

  bool isEnabled() const { return enabled_; }
  void setEnabled(bool enabled);
  bool isSelected() const { return selected_; }
  virtual void setSelected(bool selected);
  UIControlContentHorizontalAlignment contentHorizontalAlignment() const { return horizontalAlignment_; }
  void setContentHorizontalAlignment(UIControlContentHorizontalAlignment alignment);

  void addTarget(std::weak_ptr<UIResponder> target, std::string action, UIControlEvents events);
  // The actions wired for the event, in the order they were added.
  std::vector<std::string> actionsForControlEvent(UIControlEvents event) const;
  // As the platform does when the user lifts a finger inside the control.
  void sendActionsForControlEvents(UIControlEvents events);

 private:
  struct Wiring {
    std::weak_ptr<UIResponder> target;
    std::string action;
    UIControlEvents events;
  };
  std::vector<Wiring> wiring_;
  bool enabled_ = true;
  bool selected_ = false;
  UIControlContentHorizontalAlignment horizontalAlignment_ = UIControlContentHorizontalAlignment::center;
};
