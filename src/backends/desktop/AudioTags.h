#pragma once

#include <optional>
#include <string>

namespace nimbrel::desktop {

// A song's tags as TagLib reads them; no value when the file is no audio TagLib knows.
struct AudioTags {
  std::optional<std::string> title, artist, album;
  double duration = 0;
  bool artwork = false;
  bool readable = true;  // whether the audio itself has a length to play

  static std::optional<AudioTags> read(const std::string& path);
};

}  // namespace nimbrel::desktop
