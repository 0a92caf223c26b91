#pragma once

#include "platform/uikit/UIView.h"

// The platform's spinner. Style 100 is medium, 101 large.
class UIActivityIndicatorView : public UIView {
 public:
  explicit UIActivityIndicatorView(int style = 100) : style_(style) {}
  const char* className() const override { return "UIActivityIndicatorView"; }
  int style() const { return style_; }
  bool hidesWhenStopped = true;
  bool isAnimating() const { return animating_; }
  void startAnimating() {
    animating_ = true;
    setHidden(false);
  }
  void stopAnimating() {
    animating_ = false;
    if (hidesWhenStopped) setHidden(true);
  }

 private:
  int style_;
  bool animating_ = false;
};
