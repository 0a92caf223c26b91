#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "platform/uikit/UIImage.h"

// Reads the pixels of a picture that only names where it comes from (a file, a song's artwork), at
// the picture's own size. Installed by a platform that can read such sources; none on the sim,
// whose pictures have a size and no pixels.
class ImageDecoder {
 public:
  virtual ~ImageDecoder() = default;
  // Straight (not premultiplied) RGBA, width * height * 4 bytes; none when the source is unreadable.
  virtual std::optional<std::vector<std::uint8_t>> decode(const UIImage::Pixels& picture) const = 0;

  static std::shared_ptr<ImageDecoder> current();  // may be null
  static void install(std::shared_ptr<ImageDecoder> decoder);
};
