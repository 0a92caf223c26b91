#include "backends/desktop/DesktopImageDecoder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <string_view>

#include "backends/desktop/media/AudioTags.h"
#include "backends/desktop/media/ImageCodec.h"
#include "backends/desktop/media/MediaProbe.h"

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

// Names a song's file as it is now: another cover, or the same file changed, is another name.
std::optional<std::string> coverKey(const std::string& song) {
  struct stat st;
  if (::stat(song.c_str(), &st) != 0) return std::nullopt;
  std::string text = song + '\n' + std::to_string(st.st_size) + '\n' + std::to_string(st.st_mtim.tv_sec) + '.' +
                     std::to_string(st.st_mtim.tv_nsec);
  std::uint64_t h = 1469598103934665603ull;  // FNV-1a: stable across runs and builds
  for (unsigned char c : text) h = (h ^ c) * 1099511628211ull;
  char hex[17];
  std::snprintf(hex, sizeof hex, "%016llx", static_cast<unsigned long long>(h));
  return std::string(hex);
}

std::string cachedCoverPath(const std::string& cache, const std::string& key) { return cache + "/" + key + ".jpg"; }

// The cover at most `kCachedSide` on a side, kept in the cache: the next reading is one small file's,
// and a scan that finds the file there knows the song's cover is ready without opening the song.
std::optional<RgbaImage> screenSizedCover(const std::string& data, const std::string& cache, const std::string& key) {
  const int side = DesktopImageDecoder::kCachedSide;
  auto full = decodeImageData(data, side, side);
  if (!full) return std::nullopt;
  RgbaImage kept = std::move(*full);
  if (kept.width > side || kept.height > side) {
    auto [w, h] = fitInSquare(kept.width, kept.height, side);
    kept = resized(kept, w, h);
  }
  std::error_code ec;
  std::filesystem::create_directories(cache, ec);
  writeJpeg(cachedCoverPath(cache, key), kept, 92);
  return kept;
}

std::optional<RgbaImage> decodeCover(const std::string& song, int width, int height, const std::string& cache) {
  const int side = DesktopImageDecoder::kCachedSide;
  const bool cacheable = !cache.empty() && width <= side && height <= side;
  std::optional<std::string> key = cacheable ? coverKey(song) : std::nullopt;
  if (key) {
    if (auto image = decodeJpegCovering(cachedCoverPath(cache, *key), width, height)) return image;
  }
  auto data = AudioTags::artworkData(song);
  if (!data) return std::nullopt;
  if (!key) return decodeImageData(*data, width, height);
  return screenSizedCover(*data, cache, *key);
}

}  // namespace

std::optional<std::vector<std::uint8_t>> DesktopImageDecoder::decode(const UIImage::Pixels& picture) const {
  if (picture.width <= 0 || picture.height <= 0 || picture.source.empty()) return std::nullopt;
  const std::string& source = picture.source;
  std::optional<RgbaImage> image;
  if (source.size() > kArtworkSuffix.size() && source.ends_with(kArtworkSuffix)) {
    image = decodeCover(source.substr(0, source.size() - kArtworkSuffix.size()), picture.width, picture.height,
                        coverCache_);
  } else {
    image = decodeFile(source, picture.width, picture.height);
  }
  if (!image || image->width <= 0 || image->height <= 0) return std::nullopt;
  return coverCropped(*image, picture.width, picture.height).pixels;
}

void DesktopImageDecoder::prepareCover(const std::string& song) const {
  if (coverCache_.empty()) return;
  auto key = coverKey(song);
  if (!key || ::access(cachedCoverPath(coverCache_, *key).c_str(), F_OK) == 0) return;
  if (auto data = AudioTags::artworkData(song)) screenSizedCover(*data, coverCache_, *key);
}

}  // namespace nimbrel::desktop
