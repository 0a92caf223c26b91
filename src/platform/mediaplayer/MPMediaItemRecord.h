#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/Date.h"

// What a music library knows of one song. Backends fill these; MPMediaItem wraps them.
struct MPMediaItemRecord {
  std::uint64_t persistentID = 0;
  std::optional<std::string> title;
  std::optional<std::string> artist;
  std::optional<std::string> albumTitle;
  double playbackDuration = 0;
  std::optional<std::int64_t> fileSize;
  std::optional<Date> dateAdded;
  bool hasAssetURL = true;
  bool hasArtwork = true;
  bool artworkRenders = true;
  // Whether the file behind the song can be read as timed media.
  bool readable = true;
  std::string backingPath;
};

// One album of the library, as the album query answers it.
struct MPMediaCollectionRecord {
  std::optional<std::string> title;
  std::vector<std::uint64_t> songs;
};
