#pragma once

#include "platform/uikit/UIView.h"

// A bar that blurs what lies behind it when translucent.
class UIToolbar : public UIView {
 public:
  using UIView::UIView;
  const char* className() const override { return "UIToolbar"; }
  bool isTranslucent() const { return translucent_; }
  void setTranslucent(bool translucent) {
    translucent_ = translucent;
    didChange();
  }

 private:
  bool translucent_ = true;
};
