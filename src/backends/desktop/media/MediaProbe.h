#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "backends/desktop/index/MediaReader.h"

namespace nimbrel::desktop {

// Pictures: EXIF DateTimeOriginal (with OffsetTimeOriginal when given, else local time), pixel size
// and orientation, GPS position; the selfie and panorama hints. No value when the file cannot be
// read as a picture.
std::optional<MediaFacts> probeImage(const std::string& path);
// A JPEG's head read by Exiv2 alone, as it is read when the plain reader declines: the measure the
// plain reader is held to.
std::optional<MediaFacts> readJpegHeadWithExiv2(std::string_view head);
// Movies: duration, the shown size (rotation applied), creation time and ISO 6709 location tags.
std::optional<MediaFacts> probeVideo(const std::string& path);
// Seconds of timed media in any file libavformat reads; none when it cannot.
std::optional<double> probeDuration(const std::string& path);

// "2019:07:14 18:30:05" read as local time, or at `offset` ("+02:00") when given.
std::optional<double> parseExifDateTime(std::string_view text, std::string_view offset = {});
// "+48.8584+002.2945+035.000/" → latitude, longitude.
std::optional<std::pair<double, double>> parseIso6709(std::string_view text);

}  // namespace nimbrel::desktop
