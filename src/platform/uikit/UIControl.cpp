#include "platform/uikit/UIControl.h"

void UIControl::setEnabled(bool enabled) {
  enabled_ = enabled;
  didChange();
}

void UIControl::setSelected(bool selected) {
  selected_ = selected;
  didChange();
}

void UIControl::setContentHorizontalAlignment(UIControlContentHorizontalAlignment alignment) {
  horizontalAlignment_ = alignment;
  didChange();
}

void UIControl::addTarget(std::weak_ptr<UIResponder> target, std::string action,
                          UIControlEvents events) {
  wiring_.push_back({std::move(target), std::move(action), events});
}

std::vector<std::string> UIControl::actionsForControlEvent(UIControlEvents event) const {
  std::vector<std::string> out;
  for (const auto& w : wiring_) {
    if (static_cast<unsigned>(w.events) & static_cast<unsigned>(event)) out.push_back(w.action);
  }
  return out;
}

void UIControl::sendActionsForControlEvents(UIControlEvents events) {
  if (!enabled_) return;
  auto self = shared_from_this();
  auto wiring = wiring_;
  for (const auto& w : wiring) {
    if (!(static_cast<unsigned>(w.events) & static_cast<unsigned>(events))) continue;
    if (auto target = w.target.lock()) target->performAction(w.action, self);
  }
}
