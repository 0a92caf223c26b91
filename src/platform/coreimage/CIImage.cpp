#include "platform/coreimage/CIImage.h"

#include "platform/uikit/ImageDecoder.h"

std::optional<CIImage> CIImage::imageWithImage(const UIImage& image) {
  const UIImage::Pixels* pixels = image.pixels();
  if (!pixels) {
    // A catalogue picture: known by name only here, it renders at no size of its own.
    auto named = std::make_shared<UIImage::Pixels>();
    named->source = "asset:" + image.name();
    return CIImage(std::move(named), {0, 0});
  }
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
