// Arbitrary bytes as a media file for the desktop library's readers: EXIF through Exiv2, movies
// through libavformat, tags and covers through TagLib, and the text forms those readers parse.
// The first byte chooses the file's extension (which picks the reader), the rest is the file.
// A JPEG's head is also read by the plain reader, which must agree with Exiv2 whenever both answer.
#include <unistd.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>

#include "backends/desktop/media/AudioTags.h"
#include "backends/desktop/media/JpegFacts.h"
#include "backends/desktop/media/MediaProbe.h"

using namespace nimbrel::desktop;

namespace {

// Kept in the order the seeds were written with: the first byte indexes this list.
constexpr const char* kExtensions[] = {"jpg", "heic", "png", "mov", "mp4", "mp3", "flac", "m4a", "ogg",
                                       "exif-date", "iso6709"};
constexpr size_t kKinds = sizeof(kExtensions) / sizeof(kExtensions[0]);

std::string scratchFile(const char* extension) {
  static const std::string base = "/dev/shm/nimbrel-media-fuzz-" + std::to_string(::getpid()) + ".";
  return base + extension;
}

void readFile(const std::string& path) {
  switch (mediaFileKind(path)) {
    case MediaFileKind::image:
      (void)probeImage(path);
      break;
    case MediaFileKind::video:
      (void)probeVideo(path);
      (void)probeDuration(path);
      break;
    case MediaFileKind::audio:
      (void)AudioTags::read(path);
      (void)AudioTags::artworkData(path);
      (void)probeDuration(path);
      break;
    case MediaFileKind::none:
      std::fprintf(stderr, "media_reader_fuzzer: no reader for %s\n", path.c_str());
      std::abort();
  }
}

void comparePlainJpegReader(std::string_view head) {
  auto plain = readJpegFacts(head);
  auto exiv2 = plain ? readJpegHeadWithExiv2(head) : std::nullopt;
  if (!exiv2) return;
  MediaFacts ours = plain->facts;
  if (plain->dateOriginal) ours.created = parseExifDateTime(*plain->dateOriginal, plain->offsetOriginal.value_or(""));
  auto same = [](const std::optional<double>& a, const std::optional<double>& b) {
    return a.has_value() == b.has_value() && (!a || *a == *b || (std::isnan(*a) && std::isnan(*b)));
  };
  if (ours.width != exiv2->width || ours.height != exiv2->height || ours.orientation != exiv2->orientation ||
      !same(ours.created, exiv2->created) || !same(ours.latitude, exiv2->latitude) ||
      !same(ours.longitude, exiv2->longitude) || ours.selfie != exiv2->selfie || ours.screenshot != exiv2->screenshot ||
      ours.panorama != exiv2->panorama) {
    std::fprintf(stderr,
                 "media_reader_fuzzer: the plain JPEG reader and Exiv2 differ: size %dx%d / %dx%d, orientation %d / %d, "
                 "created %.3f / %.3f, place %.6f,%.6f / %.6f,%.6f, selfie %d / %d, screenshot %d / %d, panorama %d / %d\n",
                 ours.width, ours.height, exiv2->width, exiv2->height, ours.orientation, exiv2->orientation,
                 ours.created.value_or(-1), exiv2->created.value_or(-1), ours.latitude.value_or(-1),
                 ours.longitude.value_or(-1), exiv2->latitude.value_or(-1), exiv2->longitude.value_or(-1), ours.selfie,
                 exiv2->selfie, ours.screenshot, exiv2->screenshot, ours.panorama, exiv2->panorama);
    std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  if (size == 0) return 0;
  std::string_view kind = kExtensions[data[0] % kKinds];
  std::string_view body(reinterpret_cast<const char*>(data + 1), size - 1);
  if (kind == "exif-date") {
    size_t split = body.find('\n');
    std::string_view offset = split == std::string_view::npos ? std::string_view{} : body.substr(split + 1);
    (void)parseExifDateTime(body.substr(0, split), offset);
    return 0;
  }
  if (kind == "iso6709") {
    (void)parseIso6709(body);
    return 0;
  }
  if (kind == "jpg") comparePlainJpegReader(body);
  std::string path = scratchFile(kExtensions[data[0] % kKinds]);
  {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(body.data(), static_cast<std::streamsize>(body.size()));
  }
  readFile(path);
  ::unlink(path.c_str());
  return 0;
}
