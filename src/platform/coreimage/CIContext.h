#pragma once

#include <memory>
#include <optional>

#include "platform/coreimage/CIImage.h"
#include "platform/uikit/UIImage.h"

// A bitmap image as a context renders it.
using CGImageRef = std::shared_ptr<const UIImage::Pixels>;

// Renders Core Image images into bitmaps.
class CIContext {
 public:
  // Options are not used on this platform; nil in every caller.
  explicit CIContext(const void* options = nullptr) {}
  // The part of `image` inside `rect` (in the image's space); none when they do not meet.
  CGImageRef createCGImage(const CIImage& image, CGRect rect) const;
};
