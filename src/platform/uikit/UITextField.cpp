#include "platform/uikit/UITextField.h"

void UITextField::setText(std::optional<std::string> text) {
  if (text == text_) return;
  text_ = std::move(text);
  didChange();
}

void UITextField::setPlaceholder(std::optional<std::string> placeholder) {
  placeholder_ = std::move(placeholder);
  didChange();
}

void UITextField::setFont(UIFont font) {
  font_ = std::move(font);
  didChange();
}

void UITextField::setLeftView(std::shared_ptr<UIView> view) {
  leftView_ = std::move(view);
  didChange();
}

void UITextField::setLeftViewMode(UITextFieldViewMode mode) {
  leftViewMode_ = mode;
  didChange();
}

void UITextField::setEditing(bool editing) {
  if (editing == editing_) return;
  editing_ = editing;
  didChange();
}

bool UITextField::showsLeftView() const {
  if (!leftView_) return false;
  switch (leftViewMode_) {
    case UITextFieldViewMode::never: return false;
    case UITextFieldViewMode::whileEditing: return editing_;
    case UITextFieldViewMode::unlessEditing: return !editing_;
    case UITextFieldViewMode::always: return true;
  }
  return false;
}
