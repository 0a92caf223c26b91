#pragma once

#include <memory>
#include <vector>

#include "platform/mediaplayer/MPMediaItemRecord.h"

// What a music library must provide: the simulated library of a fixture, or the desktop's indexed
// music folder.
class MediaLibrarySource {
 public:
  virtual ~MediaLibrarySource() = default;
  // Every song, in the library's order.
  virtual std::vector<std::shared_ptr<const MPMediaItemRecord>> songs() const = 0;
  // The album query's collections, in order.
  virtual std::vector<MPMediaCollectionRecord> albums() const = 0;

  static std::shared_ptr<MediaLibrarySource> current();
  static void install(std::shared_ptr<MediaLibrarySource> source);
};
