#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/photos/PHTypes.h"

namespace nimbrel::desktop {

// What a file says of itself: dates, sizes and places from its metadata.
struct MediaFacts {
  PHAssetMediaType kind = PHAssetMediaType::unknown;
  std::optional<double> created;  // seconds since 1970
  int width = 0, height = 0;      // as shown, the orientation applied
  int orientation = 1;            // EXIF 1..8
  double duration = 0;
  std::optional<double> latitude, longitude;
  bool selfie = false;
  bool panorama = false;
  bool screenshot = false;
};

// A song's tags.
struct SongFacts {
  std::optional<std::string> title, artist, album;
  double duration = 0;
  bool artwork = false;
  bool readable = true;  // whether the audio itself has a length to play
};

enum class MediaFileKind { none, image, video, audio };

// By the file name's extension, case aside.
MediaFileKind mediaFileKind(std::string_view path);
std::string lowercaseExtension(std::string_view path);

// How the index reads the files it finds. The readers live apart from the index, with the codec
// libraries they need, so that a program that only looks at the index does not load those.
// Safe to call from several threads at once.
class MediaReader {
 public:
  virtual ~MediaReader() = default;
  // No value when the file cannot be read as a picture, a movie or a song.
  virtual std::optional<MediaFacts> image(const std::string& path) const = 0;
  virtual std::optional<MediaFacts> video(const std::string& path) const = 0;
  virtual std::optional<SongFacts> song(const std::string& path) const = 0;
};

}  // namespace nimbrel::desktop
