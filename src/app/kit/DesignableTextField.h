#pragma once

#include "platform/uikit/UITextField.h"

namespace nimbrel {

// A text field whose text can start 15 points in from the left edge.
class DesignableTextField : public UITextField {
 public:
  using UITextField::UITextField;
  const char* className() const override { return "DesignableTextField"; }

  bool isLeftPadding() const { return leftPadding_; }
  // The inspectable property: stores the choice and applies it.
  void setIsLeftPadding(bool padding);
  // Applies a choice without storing it. Turning padding off hides the left view but keeps it.
  void setLeftPadding(bool padding);

 private:
  bool leftPadding_ = false;
};

}  // namespace nimbrel
