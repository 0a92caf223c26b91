#include "platform/uikit/UIButton.h"

namespace {
template <class Map>
auto lookup(const Map& map, UIControlState state) -> typename Map::mapped_type {
  if (auto it = map.find(static_cast<unsigned>(state)); it != map.end()) return it->second;
  if (auto it = map.find(0u); it != map.end()) return it->second;
  return {};
}

template <class Map, class Value>
void store(Map& map, UIControlState state, std::optional<Value> value) {
  // No value unsets the state, which then shows the normal one again.
  if (value) {
    map[static_cast<unsigned>(state)] = std::move(value);
  } else {
    map.erase(static_cast<unsigned>(state));
  }
}
}  // namespace

void UIButton::setTitle(std::optional<std::string> title, UIControlState state) {
  store(titles_, state, std::move(title));
  didChange();
}

std::optional<std::string> UIButton::titleForState(UIControlState state) const {
  return lookup(titles_, state);
}

std::optional<std::string> UIButton::currentTitle() const {
  return titleForState(currentState());
}

void UIButton::setImage(std::optional<UIImage> image, UIControlState state) {
  store(images_, state, std::move(image));
  didChange();
}

std::optional<UIImage> UIButton::imageForState(UIControlState state) const {
  return lookup(images_, state);
}

std::optional<UIImage> UIButton::currentImage() const {
  return imageForState(currentState());
}

void UIButton::setTitleColor(UIColor color, UIControlState state) {
  titleColors_[static_cast<unsigned>(state)] = color;
  didChange();
}

std::optional<UIColor> UIButton::currentTitleColor() const {
  if (auto it = titleColors_.find(static_cast<unsigned>(currentState())); it != titleColors_.end()) {
    return it->second;
  }
  if (auto it = titleColors_.find(0u); it != titleColors_.end()) return it->second;
  return std::nullopt;
}

void UIButton::setTitleFont(UIFont font) {
  titleFont_ = std::move(font);
  didChange();
}

UIControlState UIButton::currentState() const {
  if (!isEnabled()) return UIControlState::disabled;
  if (isSelected()) return UIControlState::selected;
  return UIControlState::normal;
}
