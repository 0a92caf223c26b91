#pragma once

#include <memory>
#include <optional>

#include "platform/uikit/CGGeometry.h"
#include "platform/uikit/UIImage.h"

// An image in Core Image's working space: pixels placed at `extent` (a filter's output may reach
// past its input, to negative origins). Pixels are straight RGBA; they may be absent when the
// picture is only known by size and source.
class CIImage {
 public:
  CIImage(std::shared_ptr<const UIImage::Pixels> pixels, CGPoint origin)
      : pixels_(std::move(pixels)), origin_(origin) {}
  static std::optional<CIImage> imageWithImage(const UIImage& image);

  CGRect extent() const;
  const UIImage::Pixels& pixels() const { return *pixels_; }
  std::shared_ptr<const UIImage::Pixels> sharedPixels() const { return pixels_; }

 private:
  std::shared_ptr<const UIImage::Pixels> pixels_;
  CGPoint origin_;
};
