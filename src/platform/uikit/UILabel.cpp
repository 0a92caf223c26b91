#include "platform/uikit/UILabel.h"

#include "platform/uikit/TextMeasurer.h"

#include <algorithm>

void UILabel::setText(std::optional<std::string> text) {
  attributed_.reset();
  if (text == text_) return;
  text_ = std::move(text);
  didChange();
}

void UILabel::setAttributedText(std::optional<NSAttributedString> text) {
  attributed_ = std::move(text);
  text_ = attributed_ ? std::optional<std::string>(attributed_->string()) : std::nullopt;
  didChange();
}

void UILabel::sizeToFit() {
  CGSize size{0, 0};
  if (attributed_) {
    // One line per line break; the widest line sets the width.
    double lineWidth = 0, lineHeight = 0;
    for (const auto& run : attributed_->runs) {
      size_t start = 0;
      while (true) {
        size_t brk = run.text.find('\n', start);
        auto piece = run.text.substr(start, brk == std::string::npos ? std::string::npos : brk - start);
        CGSize measured = TextMeasurer::current().measure(piece, run.font);
        lineWidth += measured.width;
        lineHeight = std::max(lineHeight, measured.height);
        if (brk == std::string::npos) break;
        size.width = std::max(size.width, lineWidth);
        size.height += lineHeight;
        lineWidth = 0;
        lineHeight = 0;
        start = brk + 1;
      }
    }
    size.width = std::max(size.width, lineWidth);
    size.height += lineHeight;
  } else {
    size = intrinsicContentSize();
  }
  setFrame(CGRect{frame().origin, size});
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
