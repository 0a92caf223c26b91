#pragma once

#include <string>

#include "platform/uikit/ImageDecoder.h"

namespace nimbrel::desktop {

// Pictures read from the user's files: a song's embedded cover ("<song>#artwork") or an image
// file, decoded no larger than the picture's size needs and cut to fill it, as a cover fills a box.
// With a cache folder, a cover is kept there once at no more than a screen's size: a song's file
// holds its cover at full size, and reading that whole costs more than a screen can wait.
class DesktopImageDecoder : public ImageDecoder {
 public:
  static constexpr int kCachedSide = 1024;

  explicit DesktopImageDecoder(std::string coverCache = {}) : coverCache_(std::move(coverCache)) {}
  std::optional<std::vector<std::uint8_t>> decode(const UIImage::Pixels& picture) const override;
  // Keeps a large cover of `song` in the cache ahead of its first showing, as a library scan finds
  // it; any thread, and nothing to do when it is there already.
  void prepareCover(const std::string& song) const;

 private:
  std::string coverCache_;
};

}  // namespace nimbrel::desktop
