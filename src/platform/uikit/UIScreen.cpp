#include "platform/uikit/UIScreen.h"

UIScreen& UIScreen::mainScreen() {
  static UIScreen screen;
  return screen;
}

CGRect UIScreen::bounds() const {
  return CGRect{{0, 0}, size_};
}

double UIScreen::scale() const {
  return scale_;
}

void UIScreen::configure(CGSize size, double scale) {
  size_ = size;
  scale_ = scale;
}
