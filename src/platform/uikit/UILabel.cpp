#include "platform/uikit/UILabel.h"

#include "platform/uikit/TextMeasurer.h"

void UILabel::setText(std::optional<std::string> text) {
  if (text == text_) return;
  text_ = std::move(text);
  didChange();
}

void UILabel::setTextColor(UIColor color) {
  textColor_ = color;
  didChange();
}

void UILabel::setFont(UIFont font) {
  font_ = std::move(font);
  didChange();
}

void UILabel::setTextAlignment(NSTextAlignment alignment) {
  alignment_ = alignment;
  didChange();
}

void UILabel::setNumberOfLines(int lines) {
  numberOfLines_ = lines;
  didChange();
}

CGSize UILabel::intrinsicContentSize() const {
  if (!text_ || text_->empty()) return {0, 0};
  return TextMeasurer::current().measure(*text_, font_);
}
