#include "app/audio/SongRecords.h"

#include <cmath>

#include "app/core/Constant.h"
#include "app/media/AssetReaders.h"
#include "platform/foundation/FatalError.h"

namespace nimbrel {

namespace {
constexpr const char* kFile = "Nimbrel/AudioVC";
}

AlbumModel albumRecord(const MPMediaItemCollection& album) {
  AlbumModel model;
  if (auto song = album.representativeItem()) model.name = song->albumTitle().value_or(std::string());
  model.count = static_cast<long>(album.count());
  return model;
}

PhotoModel songRecord(const MPMediaItem& song) {
  PhotoModel model;
  model.name = song.title().value_or(std::string());
  if (auto url = song.assetURL()) model.identifier = url->absoluteString();
  model.creationDate = song.dateAdded().value_or(Date::now());
  double seconds = std::trunc(song.playbackDuration());
  if (!std::isfinite(seconds)) {
    fatalError("Double value cannot be converted to Int because it is either infinite or NaN", kFile, 0);
  }
  if (seconds < -9223372036854775808.0 || seconds >= 9223372036854775808.0) {
    fatalError("Double value cannot be converted to Int because it is outside the representable range", kFile, 0);
  }
  model.duration = static_cast<long>(seconds);
  std::int64_t bytes = 0;
  if (auto value = song.valueForProperty("fileSize"); value && value->isInteger()) bytes = value->integer();
  model.size = Units(static_cast<std::int64_t>(bytesThroughFloat(bytes, kFile, 0)));
  return model;
}

std::optional<UIImage> songArtwork(const MPMediaItem& song, CGSize size) {
  if (auto artwork = song.artwork()) {
    if (auto image = artwork->imageWithSize(size)) return image;
  }
  return Constant::musicPlaceholder();
}

}  // namespace nimbrel
