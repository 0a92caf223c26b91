#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/uikit/UIControl.h"
#include "platform/uikit/UIFont.h"

enum class UITextFieldViewMode { never = 0, whileEditing = 1, unlessEditing = 2, always = 3 };

// A one-line text entry as state: its text, placeholder, font and the view at its left edge.
class UITextField : public UIControl {
 public:
  using UIControl::UIControl;
  const char* className() const override { return "UITextField"; }

  const std::optional<std::string>& text() const { return text_; }
  void setText(std::optional<std::string> text);
  const std::optional<std::string>& placeholder() const { return placeholder_; }
  void setPlaceholder(std::optional<std::string> placeholder);
  const UIFont& font() const { return font_; }
  void setFont(UIFont font);

  // The left view is drawn inside the field, not one of its subviews.
  const std::shared_ptr<UIView>& leftView() const { return leftView_; }
  void setLeftView(std::shared_ptr<UIView> view);
  UITextFieldViewMode leftViewMode() const { return leftViewMode_; }
  void setLeftViewMode(UITextFieldViewMode mode);

  bool isEditing() const { return editing_; }
  void setEditing(bool editing);
  // Whether a person sees the left view now: there is one and the mode allows it.
  bool showsLeftView() const;

 private:
  std::optional<std::string> text_;
  std::optional<std::string> placeholder_;
  UIFont font_;
  std::shared_ptr<UIView> leftView_;
  UITextFieldViewMode leftViewMode_ = UITextFieldViewMode::never;
  bool editing_ = false;
};
