#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace nimbrel::desktop {

// Pixels as 8-bit RGBA rows, top to bottom.
struct RgbaImage {
  int width = 0, height = 0;
  std::vector<std::uint8_t> pixels;
  RgbaImage() = default;
  RgbaImage(int w, int h) : width(w), height(h), pixels(static_cast<size_t>(w) * h * 4, 255) {}
  std::uint8_t* at(int x, int y) { return pixels.data() + (static_cast<size_t>(y) * width + x) * 4; }
  const std::uint8_t* at(int x, int y) const { return pixels.data() + (static_cast<size_t>(y) * width + x) * 4; }
};

// A JPEG decoded at the smallest of libjpeg's scales (1/8 to 1/1) whose longer side still
// reaches `minLongSide` (0: full size). The stored orientation is not applied.
std::optional<RgbaImage> decodeJpeg(const std::string& path, int minLongSide = 0);
// A JPEG decoded at the smallest of those scales that is still at least `minWidth` × `minHeight`.
std::optional<RgbaImage> decodeJpegCovering(const std::string& path, int minWidth, int minHeight);
std::optional<RgbaImage> decodePng(const std::string& path);
// A JPEG or PNG held in memory (a song's embedded cover); a JPEG as decodeJpegCovering does.
std::optional<RgbaImage> decodeImageData(const std::string& bytes, int minWidth, int minHeight);
// HEIF stills come out as shown (HEIF's own rotation applied).
std::optional<RgbaImage> decodeHeif(const std::string& path);
// The first picture of a movie, its display rotation applied, its longer side at most `maxLongSide`.
std::optional<RgbaImage> decodeVideoFrame(const std::string& path, int maxLongSide);
// By extension: JPEG, PNG, HEIF, or a movie's first frame. Orientation not applied.
std::optional<RgbaImage> decodeAny(const std::string& path, int minLongSide);

RgbaImage resized(const RgbaImage& image, int width, int height);
// Scaled to cover `width` × `height`, keeping its aspect, and cut to it around the centre.
RgbaImage coverCropped(const RgbaImage& image, int width, int height);
// Turns stored pixels into shown pixels for EXIF orientation 1..8.
RgbaImage oriented(const RgbaImage& image, int orientation);
// The largest size with the image's aspect that fits a `box` square, never larger than the image.
std::pair<int, int> fitInSquare(int width, int height, int box);

// Writes atomically (temporary file, rename) with mode `mode`, text chunks before the pixels.
bool writePng(const std::string& path, const RgbaImage& image,
              const std::vector<std::pair<std::string, std::string>>& text = {}, unsigned mode = 0644);
bool writeJpeg(const std::string& path, const RgbaImage& image, int quality = 85);

struct PngInfo {
  int width = 0, height = 0;
  std::map<std::string, std::string> text;
};
// The header and text chunks of a PNG file, those after the pixels included.
std::optional<PngInfo> readPngInfo(const std::string& path);

}  // namespace nimbrel::desktop
