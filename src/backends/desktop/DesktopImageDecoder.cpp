#include "backends/desktop/DesktopImageDecoder.h"

#include <string_view>

#include "backends/desktop/AudioTags.h"
#include "backends/desktop/ImageCodec.h"
#include "backends/desktop/MediaProbe.h"

namespace nimbrel::desktop {

namespace {

constexpr std::string_view kArtworkSuffix = "#artwork";

std::optional<RgbaImage> decodeFile(const std::string& path, int width, int height) {
  std::string ext = lowercaseExtension(path);
  if (ext != "jpg" && ext != "jpeg") return decodeAny(path, std::max(width, height));
  // Stored pixels lie on their side for orientations 5 to 8: the box turns with them.
  auto facts = probeImage(path);
  int orientation = facts ? facts->orientation : 1;
  bool turned = orientation >= 5 && orientation <= 8;
  auto stored = decodeJpegCovering(path, turned ? height : width, turned ? width : height);
  if (!stored) return std::nullopt;
  return oriented(*stored, orientation);
}

}  // namespace

std::optional<std::vector<std::uint8_t>> DesktopImageDecoder::decode(const UIImage::Pixels& picture) const {
  if (picture.width <= 0 || picture.height <= 0 || picture.source.empty()) return std::nullopt;
  const std::string& source = picture.source;
  std::optional<RgbaImage> image;
  if (source.size() > kArtworkSuffix.size() && source.ends_with(kArtworkSuffix)) {
    auto data = AudioTags::artworkData(source.substr(0, source.size() - kArtworkSuffix.size()));
    if (data) image = decodeImageData(*data, picture.width, picture.height);
  } else {
    image = decodeFile(source, picture.width, picture.height);
  }
  if (!image || image->width <= 0 || image->height <= 0) return std::nullopt;
  return coverCropped(*image, picture.width, picture.height).pixels;
}

}  // namespace nimbrel::desktop
