#include "backends/desktop/media/FileMediaReader.h"

#include "backends/desktop/media/AudioTags.h"
#include "backends/desktop/media/MediaProbe.h"

namespace nimbrel::desktop {

std::shared_ptr<const MediaReader> FileMediaReader::shared() {
  static const auto reader = std::make_shared<const FileMediaReader>();
  return reader;
}

std::optional<MediaFacts> FileMediaReader::image(const std::string& path) const { return probeImage(path); }

std::optional<MediaFacts> FileMediaReader::video(const std::string& path) const { return probeVideo(path); }

std::optional<SongFacts> FileMediaReader::song(const std::string& path) const {
  auto tags = AudioTags::read(path);
  if (!tags) return std::nullopt;
  return static_cast<const SongFacts&>(*tags);
}

}  // namespace nimbrel::desktop
