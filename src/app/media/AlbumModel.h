#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/photos/PHAsset.h"
#include "platform/photos/PHAssetCollection.h"
#include "platform/photos/PHFetchResult.h"

namespace nimbrel {

// One row of an album list: the album, what a fetch found in it and its cover.
struct AlbumModel {
  std::shared_ptr<PHAssetCollection> assetCollection = std::make_shared<PHAssetCollection>();
  PHFetchResult<PHAsset> albumFetchResult;
  std::shared_ptr<PHAsset> albumAsset = std::make_shared<PHAsset>();
  std::string name;
  long count = 0;
  std::string identifier;

  // None for an album with nothing to show (count < 1). The cover is the result's first element,
  // the newest under the lists' newest-first fetches.
  static std::optional<AlbumModel> fromAlbum(const std::shared_ptr<PHAssetCollection>& album, long count,
                                             const PHFetchResult<PHAsset>& result);
};

}  // namespace nimbrel
