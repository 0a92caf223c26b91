#pragma once

#include <optional>
#include <string>

#include "platform/uikit/UIFont.h"
#include "platform/uikit/UIView.h"

enum class NSTextAlignment { left = 0, center = 1, right = 2, justified = 3, natural = 4 };

class UILabel : public UIView {
 public:
  using UIView::UIView;
  const char* className() const override { return "UILabel"; }

  const std::optional<std::string>& text() const { return text_; }
  void setText(std::optional<std::string> text);
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
  UIColor textColor_ = UIColor::labelColor();
  UIFont font_;
  NSTextAlignment alignment_ = NSTextAlignment::natural;
  int numberOfLines_ = 1;
};
