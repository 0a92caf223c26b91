#pragma once

#include <optional>

#include "platform/uikit/UIImage.h"
#include "platform/uikit/UIView.h"

class UIImageView : public UIView {
 public:
  using UIView::UIView;
  const char* className() const override { return "UIImageView"; }

  const std::optional<UIImage>& image() const { return image_; }
  void setImage(std::optional<UIImage> image) {
    image_ = std::move(image);
    didChange();
  }
  CGSize intrinsicContentSize() const override {
    return image_ ? image_->size() : CGSize{-1, -1};
  }

 private:
  std::optional<UIImage> image_;
};
