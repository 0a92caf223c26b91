#pragma once

#include <memory>
#include <string>
#include <vector>

#include "backends/sim/Fixture.h"
#include "platform/mediaplayer/MediaLibrarySource.h"

namespace nimbrel::sim {

// The fixture's music library, each song with a sparse file of its size in the run's home.
class SimMusicLibrary : public MediaLibrarySource {
 public:
  SimMusicLibrary(const Fixture& fixture, const std::string& home);
  std::vector<std::shared_ptr<const MPMediaItemRecord>> songs() const override { return songs_; }
  std::vector<MPMediaCollectionRecord> albums() const override { return albums_; }

 private:
  std::vector<std::shared_ptr<const MPMediaItemRecord>> songs_;
  std::vector<MPMediaCollectionRecord> albums_;
};

}  // namespace nimbrel::sim
