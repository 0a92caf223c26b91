#include "backends/desktop/media/ThumbnailCache.h"

#include <md5.h>
#include <sys/stat.h>

#include <cstdio>
#include <filesystem>

#include "backends/desktop/index/FileUri.h"
#include "backends/desktop/media/ImageCodec.h"
#include "backends/desktop/media/MediaProbe.h"

namespace nimbrel::desktop {

namespace {

constexpr int kBoxes[] = {128, 256, 512, 1024};

std::string md5Hex(const std::string& text) {
  MD5_CTX ctx;
  MD5Init(&ctx);
  MD5Update(&ctx, reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
  std::uint8_t digest[MD5_DIGEST_LENGTH];
  MD5Final(digest, &ctx);
  char hex[2 * MD5_DIGEST_LENGTH + 1];
  for (int i = 0; i < MD5_DIGEST_LENGTH; ++i) std::snprintf(hex + 2 * i, 3, "%02x", digest[i]);
  return hex;
}

const char* mimeType(const std::string& path) {
  std::string ext = lowercaseExtension(path);
  if (ext == "jpg" || ext == "jpeg") return "image/jpeg";
  if (ext == "png") return "image/png";
  if (ext == "heic" || ext == "heif") return "image/heif";
  if (ext == "mov") return "video/quicktime";
  if (ext == "mp4" || ext == "m4v") return "video/mp4";
  return "application/octet-stream";
}

}  // namespace

ThumbnailCache::ThumbnailCache(std::string folder) : folder_(std::move(folder)) {}

std::optional<int> ThumbnailCache::flavourFor(int longSide) {
  for (int box : kBoxes) {
    if (longSide <= box) return box;
  }
  return std::nullopt;
}

const char* ThumbnailCache::flavourFolder(int box) {
  switch (box) {
    case 128: return "normal";
    case 256: return "large";
    case 512: return "x-large";
    default: return "xx-large";
  }
}

std::string ThumbnailCache::thumbnailPath(const std::string& original, int box) const {
  return folder_ + "/" + flavourFolder(box) + "/" + md5Hex(fileUriForPath(original)) + ".png";
}

ThumbnailCache::Counts ThumbnailCache::counts() const {
  std::lock_guard lock(mutex_);
  return counts_;
}

std::optional<ThumbnailCache::Thumbnail> ThumbnailCache::validate(const std::string& original, int box,
                                                                  std::int64_t mtime) {
  std::string path = thumbnailPath(original, box);
  auto info = readPngInfo(path);
  if (!info) return std::nullopt;
  auto uri = info->text.find("Thumb::URI");
  auto when = info->text.find("Thumb::MTime");
  if (uri == info->text.end() || when == info->text.end()) return std::nullopt;
  if (uri->second != fileUriForPath(original) || when->second != std::to_string(mtime)) return std::nullopt;
  return Thumbnail{path, info->width, info->height};
}

std::optional<ThumbnailCache::Thumbnail> ThumbnailCache::lookup(const std::string& original, int box) {
  struct stat st;
  if (::stat(original.c_str(), &st) != 0) return std::nullopt;
  std::int64_t mtime = st.st_mtime;
  {
    std::lock_guard lock(mutex_);
    auto it = known_.find({original, box});
    if (it != known_.end() && it->second.first == mtime && !it->second.second.path.empty()) return it->second.second;
  }
  auto found = validate(original, box, mtime);
  if (found) {
    std::lock_guard lock(mutex_);
    known_[{original, box}] = {mtime, *found};
  }
  return found;
}

std::optional<ThumbnailCache::Thumbnail> ThumbnailCache::thumbnail(const std::string& original, int box,
                                                                   int orientation) {
  struct stat st;
  if (::stat(original.c_str(), &st) != 0) return std::nullopt;
  std::int64_t mtime = st.st_mtime;
  {
    std::lock_guard lock(mutex_);
    auto it = known_.find({original, box});
    if (it != known_.end() && it->second.first == mtime) {
      if (it->second.second.path.empty()) return std::nullopt;  // failed before: not again every scroll
      ++counts_.reused;
      return it->second.second;
    }
  }
  auto found = validate(original, box, mtime);
  bool made = false;
  if (!found) {
    found = make(original, box, orientation, mtime, st.st_size);
    made = found.has_value();
  }
  std::lock_guard lock(mutex_);
  known_[{original, box}] = {mtime, found.value_or(Thumbnail{})};
  if (made) {
    ++counts_.made;
  } else if (found) {
    ++counts_.reused;
  } else {
    ++counts_.failed;
  }
  return found;
}

std::optional<ThumbnailCache::Thumbnail> ThumbnailCache::make(const std::string& original, int box, int orientation,
                                                              std::int64_t mtime, std::int64_t size) {
  auto decoded = decodeAny(original, box);
  if (!decoded) return std::nullopt;
  RgbaImage shown = oriented(*decoded, orientation);
  auto [w, h] = fitInSquare(shown.width, shown.height, box);
  RgbaImage small = resized(shown, w, h);
  std::string path = thumbnailPath(original, box);
  std::error_code ec;
  std::filesystem::path dir = std::filesystem::path(path).parent_path();
  std::filesystem::create_directories(dir, ec);
  // The cache folders are private to the user.
  std::filesystem::permissions(folder_, std::filesystem::perms::owner_all, ec);
  std::filesystem::permissions(dir, std::filesystem::perms::owner_all, ec);
  std::vector<std::pair<std::string, std::string>> text = {
      {"Thumb::URI", fileUriForPath(original)},
      {"Thumb::MTime", std::to_string(mtime)},
      {"Thumb::Size", std::to_string(size)},
      {"Thumb::Mimetype", mimeType(original)},
      {"Software", "Nimbrel"},
  };
  if (!writePng(path, small, text, 0600)) return std::nullopt;
  return Thumbnail{path, w, h};
}

}  // namespace nimbrel::desktop
