#pragma once

#include <memory>
#include <set>
#include <vector>

#include "app/media/Lazy.h"
#include "app/media/MediaTypes.h"
#include "platform/photos/PHAssetCollection.h"
#include "platform/photos/PHFetchOptions.h"
#include "platform/photos/PHFetchResult.h"
#include "platform/photos/PHImageRequestOptions.h"

namespace nimbrel {

// The fetch settings the browse screens share: one process-wide instance whose parts, and the
// fields of each part, are made when first read. Safe from any thread.
class Fetch {
 public:
  class Album {
   public:
    Album();
    // A bare PHFetchOptions.
    std::shared_ptr<PHFetchOptions> options();
    void setOptions(std::shared_ptr<PHFetchOptions> options);
    // The album sources fetched with `options`, in their order; the library is asked only here.
    std::vector<PHFetchResult<PHAssetCollection>> fetchResults();
    void setFetchResults(std::vector<PHFetchResult<PHAssetCollection>> results);

   private:
    Lazy<std::shared_ptr<PHFetchOptions>> options_;
    Lazy<std::vector<PHFetchResult<PHAssetCollection>>> fetchResults_;
  };

  class Assets {
   public:
    Assets();
    // {image} until set.
    std::set<MediaTypes> supportedMediaTypes();
    void setSupportedMediaTypes(std::set<MediaTypes> types);
    // Newest first, restricted to the supported types as they are at the first read; a later
    // change of the types does not rebuild it.
    std::shared_ptr<PHFetchOptions> options();
    void setOptions(std::shared_ptr<PHFetchOptions> options);

   private:
    Lazy<std::set<MediaTypes>> supportedMediaTypes_;
    Lazy<std::shared_ptr<PHFetchOptions>> options_;
  };

  class Preview {
   public:
    Preview();
    // Network allowed, exact resize, synchronous, opportunistic delivery.
    std::shared_ptr<PHImageRequestOptions> photoOptions();
    void setPhotoOptions(std::shared_ptr<PHImageRequestOptions> options);
    std::shared_ptr<PHLivePhotoRequestOptions> livePhotoOptions();
    void setLivePhotoOptions(std::shared_ptr<PHLivePhotoRequestOptions> options);
    std::shared_ptr<PHVideoRequestOptions> videoOptions();
    void setVideoOptions(std::shared_ptr<PHVideoRequestOptions> options);

   private:
    Lazy<std::shared_ptr<PHImageRequestOptions>> photoOptions_;
    Lazy<std::shared_ptr<PHLivePhotoRequestOptions>> livePhotoOptions_;
    Lazy<std::shared_ptr<PHVideoRequestOptions>> videoOptions_;
  };

  Fetch();
  static std::shared_ptr<Fetch> shared();

  std::shared_ptr<Album> album();
  void setAlbum(std::shared_ptr<Album> album);
  std::shared_ptr<Assets> assets();
  void setAssets(std::shared_ptr<Assets> assets);
  std::shared_ptr<Preview> preview();
  void setPreview(std::shared_ptr<Preview> preview);

 private:
  Lazy<std::shared_ptr<Album>> album_;
  Lazy<std::shared_ptr<Assets>> assets_;
  Lazy<std::shared_ptr<Preview>> preview_;
};

}  // namespace nimbrel
