#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/uikit/UIFont.h"
#include "platform/uikit/UIView.h"

// Text in runs of one font and colour each.
struct NSAttributedString {
  struct Run {
    std::string text;
    UIFont font;
    UIColor color = UIColor::blackColor();
  };
  std::vector<Run> runs;
  std::string string() const {
    std::string s;
    for (const auto& r : runs) s += r.text;
    return s;
  }
};

enum class NSTextAlignment { left = 0, center = 1, right = 2, justified = 3, natural = 4 };

class UILabel : public UIView {
 public:
  using UIView::UIView;
  const char* className() const override { return "UILabel"; }

  const std::optional<std::string>& text() const { return text_; }
  void setText(std::optional<std::string> text);
  // Setting attributed text sets the plain text to its characters.
  const std::optional<NSAttributedString>& attributedText() const { return attributed_; }
  void setAttributedText(std::optional<NSAttributedString> text);
  int lineBreakMode() const { return lineBreakMode_; }
  void setLineBreakMode(int mode) { lineBreakMode_ = mode; }
  // Fits the frame to the text.
  void sizeToFit();
  UIColor textColor() const { return textColor_; }
  void setTextColor(UIColor color);
  const UIFont& font() const { return font_; }
  void setFont(UIFont font);
  NSTextAlignment textAlignment() const { return alignment_; }
  void setTextAlignment(NSTextAlignment alignment);
  int numberOfLines() const { return numberOfLines_; }
  void setNumberOfLines(int lines);

  // Measured through the installed text measurer (a shell's real font metrics when there is one).
  CGSize intrinsicContentSize() const override;

 private:
  std::optional<std::string> text_;
  std::optional<NSAttributedString> attributed_;
  int lineBreakMode_ = 4;
  UIColor textColor_ = UIColor::labelColor();
  UIFont font_;
  NSTextAlignment alignment_ = NSTextAlignment::natural;
  int numberOfLines_ = 1;
};
