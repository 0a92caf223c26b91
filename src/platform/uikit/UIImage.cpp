#include "platform/uikit/UIImage.h"

CGSize UIImage::size() const {
  if (pixels_) return {static_cast<double>(pixels_->width), static_cast<double>(pixels_->height)};
  return {};
}

std::string UIImage::describe() const {
  switch (kind_) {
    case Kind::asset: return name_;
    case Kind::system: return "system:" + name_;
    case Kind::pixels:
      return "pixels:" + std::to_string(pixels_->width) + "x" + std::to_string(pixels_->height);
  }
  return {};
}
