#pragma once

#include <optional>
#include <string_view>

#include "backends/desktop/index/MediaReader.h"

namespace nimbrel::desktop {

// What the index wants of a plain JPEG, read from its head without Exiv2: the frame's size, and
// from the EXIF segment the orientation, the original date and offset, the position, the lens and
// the user comment. A first index of a large library spent more time building Exiv2's tag objects
// than reading the files; this reads those few tags in place.
//
// It answers only a well-formed file it understands whole: no value whenever the head ends before
// the picture data, the file carries XMP, or any structure, tag type or frame is other than the
// plain one; the caller then asks Exiv2. On the files it answers, both read the same. `created` is
// left to the caller, from `dateOriginal` and `offsetOriginal`.
struct JpegFacts {
  MediaFacts facts;  // width, height (as stored), orientation, latitude, longitude, selfie, screenshot
  std::optional<std::string_view> dateOriginal, offsetOriginal;  // into the head
};

std::optional<JpegFacts> readJpegFacts(std::string_view head);

}  // namespace nimbrel::desktop
