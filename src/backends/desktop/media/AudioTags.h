#pragma once

#include <optional>
#include <string>

#include "backends/desktop/index/MediaReader.h"

namespace nimbrel::desktop {

// A song's tags as TagLib reads them; no value when the file is no audio TagLib knows.
struct AudioTags : SongFacts {
  static std::optional<AudioTags> read(const std::string& path);
  // The bytes of the song's embedded cover (JPEG or PNG as stored): the front cover when the file
  // names one, else its first picture; none without a picture.
  static std::optional<std::string> artworkData(const std::string& path);
};

}  // namespace nimbrel::desktop
