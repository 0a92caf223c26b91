#include "platform/coreimage/CIImage.h"

#include "platform/uikit/ImageDecoder.h"

std::optional<CIImage> CIImage::imageWithImage(const UIImage& image) {
  const UIImage::Pixels* pixels = image.pixels();
  if (!pixels || pixels->width <= 0 || pixels->height <= 0) return std::nullopt;
  auto copy = std::make_shared<UIImage::Pixels>(*pixels);
  if (copy->rgba.empty() && !copy->source.empty()) {
    if (auto decoder = ImageDecoder::current()) {
      if (auto rgba = decoder->decode(*copy)) copy->rgba = std::move(*rgba);
    }
  }
  return CIImage(std::move(copy), {0, 0});
}

CGRect CIImage::extent() const {
  return {origin_, {static_cast<CGFloat>(pixels_->width), static_cast<CGFloat>(pixels_->height)}};
}
