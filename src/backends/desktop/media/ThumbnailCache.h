#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

namespace nimbrel::desktop {

// The freedesktop thumbnail cache, shared with file managers and viewers: PNG files named by the
// MD5 of the original's URI in normal/ (128), large/ (256), x-large/ (512) and xx-large/ (1024),
// each carrying Thumb::URI and Thumb::MTime. A thumbnail is used only while those match the
// original; a missing or stale one is made and written (mode 0600, atomically). Safe from any thread.
class ThumbnailCache {
 public:
  struct Thumbnail {
    std::string path;
    int width = 0, height = 0;
  };

  explicit ThumbnailCache(std::string folder);

  // The size class whose box holds `longSide`; none past the largest.
  static std::optional<int> flavourFor(int longSide);
  static const char* flavourFolder(int box);
  // <folder>/<flavour>/<md5 of the file URI>.png
  std::string thumbnailPath(const std::string& original, int box) const;

  // A valid thumbnail already there, or none.
  std::optional<Thumbnail> lookup(const std::string& original, int box);
  // The thumbnail, made now when missing or stale. `orientation`: EXIF 1..8 of the original.
  std::optional<Thumbnail> thumbnail(const std::string& original, int box, int orientation = 1);

  struct Counts {
    int made = 0, reused = 0, failed = 0;
  };
  Counts counts() const;

 private:
  std::optional<Thumbnail> validate(const std::string& original, int box, std::int64_t mtime);
  std::optional<Thumbnail> make(const std::string& original, int box, int orientation, std::int64_t mtime,
                                std::int64_t size);

  std::string folder_;
  mutable std::mutex mutex_;
  // What this process already checked: (original, box) → (mtime, thumbnail); a failed one has no path.
  std::map<std::pair<std::string, int>, std::pair<std::int64_t, Thumbnail>> known_;
  Counts counts_;
};

}  // namespace nimbrel::desktop
