#pragma once

#include <optional>

#include "platform/foundation/Data.h"

// The pixel size that an image file's header declares (PNG, JPEG, GIF, BMP); no value for bytes
// that are none of these. Decoding the pixels is the shell's business.
struct ImageHeader {
  int width = 0;
  int height = 0;
  const char* format = "";

  static std::optional<ImageHeader> read(const Data& bytes);
  // A small PNG whose header declares the size (the pixels are one blank row): what a simulated
  // library hands out as an image's data.
  static Data placeholderPNG(int width, int height);
};
