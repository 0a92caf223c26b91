#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/media/AssetFetchResult.h"
#include "app/media/FetchOptions.h"
#include "platform/foundation/NSError.h"
#include "platform/photos/PHAsset.h"
#include "platform/photos/PHAssetCollection.h"
#include "platform/photos/PHImageRequestOptions.h"
#include "platform/uikit/UIImage.h"

namespace nimbrel {

// Album and asset helpers over the photo library; no screen calls them yet.
class photoHelper {
 public:
  using AlbumResult = AssetFetchResult<std::shared_ptr<PHAssetCollection>>;
  using AssetsResult = AssetFetchResult<std::shared_ptr<PHAsset>>;

  // The first user album of that title that holds something; Error when there is none.
  static AlbumResult getAlbum(const std::string& name);
  // The first user album of that title, empty or not; otherwise a new one of that title, read
  // back once made. Error when it cannot be made. The completion runs on a background queue when
  // an album is made, at once otherwise.
  static void getOrCreateAlbum(const std::string& title, std::function<void(AlbumResult)> completion);
  // Adds the image to the library and to the album, in one change.
  static void saveImage(const UIImage& image, std::shared_ptr<PHAssetCollection> album,
                        std::function<void(bool success, std::optional<NSError> error)> completion);

  // The album's assets by creation date (oldest first unless `newestFirst`), the first `count`.
  static AssetsResult getAssets(const PHAssetCollection& album, const FetchOptions& options);
  // Pictures of the assets at `options.size` (the asset's own pixel size without one), aspect
  // fill, one synchronous request each; assets without a picture are left out.
  static AssetFetchResult<UIImage> getImages(const std::vector<std::shared_ptr<PHAsset>>& assets,
                                             const FetchOptions& options,
                                             const PHImageRequestOptions& requestOptions = defaultImageOptions());
  static PHImageRequestOptions defaultImageOptions();

  // User albums, then smart albums, each sorted by title.
  static std::vector<std::shared_ptr<PHAssetCollection>> allAlbums();
  // The newest asset of the supported kinds, looked up on a user-interactive background queue;
  // the completion runs there.
  static void getNewestAsset(std::function<void(AssetsResult)> completion);
};

}  // namespace nimbrel
