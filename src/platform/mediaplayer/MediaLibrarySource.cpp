#include "platform/mediaplayer/MediaLibrarySource.h"

#include <mutex>

namespace {

class EmptyMusicLibrary : public MediaLibrarySource {
 public:
  std::vector<std::shared_ptr<const MPMediaItemRecord>> songs() const override { return {}; }
  std::vector<MPMediaCollectionRecord> albums() const override { return {}; }
};

std::mutex gMutex;
std::shared_ptr<MediaLibrarySource>& slot() {
  static std::shared_ptr<MediaLibrarySource> s;
  return s;
}

}  // namespace

std::shared_ptr<MediaLibrarySource> MediaLibrarySource::current() {
  std::lock_guard lock(gMutex);
  if (!slot()) slot() = std::make_shared<EmptyMusicLibrary>();
  return slot();
}

void MediaLibrarySource::install(std::shared_ptr<MediaLibrarySource> source) {
  std::lock_guard lock(gMutex);
  slot() = std::move(source);
}
