#pragma once

#include "platform/uikit/ImageDecoder.h"

namespace nimbrel::desktop {

// Pictures read from the user's files: a song's embedded cover ("<song>#artwork") or an image
// file, decoded no larger than the picture's size needs and cut to fill it, as a cover fills a box.
class DesktopImageDecoder : public ImageDecoder {
 public:
  std::optional<std::vector<std::uint8_t>> decode(const UIImage::Pixels& picture) const override;
};

}  // namespace nimbrel::desktop
