#pragma once

#include <map>
#include <optional>
#include <string>

#include "platform/uikit/UIControl.h"
#include "platform/uikit/UIFont.h"
#include "platform/uikit/UIImage.h"

enum class UIControlState : unsigned { normal = 0, highlighted = 1, disabled = 2, selected = 4 };

class UIButton : public UIControl {
 public:
  using UIControl::UIControl;
  const char* className() const override { return "UIButton"; }

  void setTitle(std::optional<std::string> title, UIControlState state = UIControlState::normal);
  // The title for the state, falling back to the normal one as the platform does.
  std::optional<std::string> titleForState(UIControlState state) const;
  // The title a person sees now.
  std::optional<std::string> currentTitle() const;
  void setImage(std::optional<UIImage> image, UIControlState state = UIControlState::normal);
  std::optional<UIImage> imageForState(UIControlState state) const;
  std::optional<UIImage> currentImage() const;
  void setTitleColor(UIColor color, UIControlState state = UIControlState::normal);
  std::optional<UIColor> currentTitleColor() const;
  // The title label's font (`titleLabel.font`).
  const UIFont& titleFont() const { return titleFont_; }
  void setTitleFont(UIFont font);

 private:
  UIControlState currentState() const;
  std::map<unsigned, std::optional<std::string>> titles_;
  std::map<unsigned, std::optional<UIImage>> images_;
  std::map<unsigned, UIColor> titleColors_;
  UIFont titleFont_ = UIFont::systemFontOfSize(15);
};
