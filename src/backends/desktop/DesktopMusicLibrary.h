#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "backends/desktop/index/LibraryIndex.h"
#include "platform/mediaplayer/MediaLibrarySource.h"

namespace nimbrel::desktop {

// The music library over the Music folder: songs with TagLib's tags, indexed beside the pictures
// (another table of the same file), persistent ids kept across runs; albums are the album tags in
// the order songs first name them, songs without one forming an untitled album.
class DesktopMusicLibrary : public MediaLibrarySource {
 public:
  // `scan`: scan the folder now; otherwise start from what the index knows (call `refresh` later).
  DesktopMusicLibrary(std::string indexPath, std::string musicFolder, bool scan = true);

  std::vector<std::shared_ptr<const MPMediaItemRecord>> songs() const override;
  std::vector<MPMediaCollectionRecord> albums() const override;

  // Scans the folder again (any thread); returns what the scan did.
  ScanReport refresh();

  static std::vector<MPMediaCollectionRecord> groupAlbums(const std::vector<std::shared_ptr<const MPMediaItemRecord>>& songs);

 private:
  void load(LibraryIndex& index);

  std::string indexPath_, folder_;
  mutable std::mutex mutex_;
  std::vector<std::shared_ptr<const MPMediaItemRecord>> songs_;
  std::vector<MPMediaCollectionRecord> albums_;
  std::mutex scanMutex_;
};

}  // namespace nimbrel::desktop
