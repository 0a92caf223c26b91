#pragma once

#include <memory>

#include "backends/desktop/index/MediaReader.h"

namespace nimbrel::desktop {

// The index's reader over the codec libraries: Exiv2 for pictures, libavformat for movies,
// TagLib for songs.
class FileMediaReader : public MediaReader {
 public:
  // One reader serves every index of a program: it keeps no state.
  static std::shared_ptr<const MediaReader> shared();

  std::optional<MediaFacts> image(const std::string& path) const override;
  std::optional<MediaFacts> video(const std::string& path) const override;
  std::optional<SongFacts> song(const std::string& path) const override;
};

}  // namespace nimbrel::desktop
