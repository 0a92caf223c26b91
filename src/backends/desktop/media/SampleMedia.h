#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace nimbrel::desktop {

// Small real media files made on the spot: the demo library, the tests and the benchmarks use
// them instead of files fetched from anywhere.
struct SampleExif {
  std::optional<std::string> dateTimeOriginal;  // "2023:06:01 12:00:00"
  std::optional<std::string> offsetTimeOriginal;  // "+02:00"
  int orientation = 0;  // 0: no tag
  std::optional<double> latitude, longitude;
  std::optional<std::string> lensModel;
  std::optional<std::string> panoramaProjection;  // XMP GPano:ProjectionType
};

// A gradient picture whose top-left quarter is red: a test can tell which way it was turned.
bool writeSampleJpeg(const std::string& path, int width, int height, const SampleExif& exif = {},
                     std::uint32_t seed = 0);
// Writes EXIF (and XMP) fields into an existing JPEG.
bool writeExif(const std::string& path, const SampleExif& exif);

struct SampleMovie {
  int width = 160, height = 120;
  double seconds = 1;
  std::optional<std::string> creationTime;  // "2023-06-01T10:00:00Z"
  std::optional<std::string> location;      // ISO 6709 "+48.8584+002.2945/"
};
// MPEG-4 video in a QuickTime or MP4 container (by extension), made with libavcodec.
bool writeSampleMovie(const std::string& path, const SampleMovie& movie);

struct SampleSong {
  double seconds = 2;
  std::optional<std::string> title, artist, album;
  std::optional<std::string> artworkJpeg;  // a JPEG file to embed as the cover
};
// A tone made with libavcodec, tagged with TagLib: MP3, or by extension FLAC, M4A (AAC) or Ogg
// Vorbis (a cover is embedded in all but Ogg).
bool writeSampleSong(const std::string& path, const SampleSong& song);

}  // namespace nimbrel::desktop
