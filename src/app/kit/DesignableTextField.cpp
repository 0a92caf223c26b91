#include "app/kit/DesignableTextField.h"

namespace nimbrel {

void DesignableTextField::setIsLeftPadding(bool padding) {
  leftPadding_ = padding;
  setLeftPadding(padding);
}

void DesignableTextField::setLeftPadding(bool padding) {
  if (padding) {
    setLeftView(std::make_shared<UIView>(CGRectMake(0, 0, 15.0, frame().height())));
    setLeftViewMode(UITextFieldViewMode::always);
  } else {
    setLeftViewMode(UITextFieldViewMode::never);
  }
}

}  // namespace nimbrel
