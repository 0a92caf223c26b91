#include "app/media/AlbumModel.h"

namespace nimbrel {

std::optional<AlbumModel> AlbumModel::fromAlbum(const std::shared_ptr<PHAssetCollection>& album, long count,
                                                const PHFetchResult<PHAsset>& result) {
  if (count < 1) return std::nullopt;
  AlbumModel model;
  if (album) model.assetCollection = album;
  model.albumFetchResult = result;
  model.albumAsset = result.objectAtIndex(0);
  model.name = model.assetCollection->localizedTitle().value_or(std::string());
  model.count = count;
  model.identifier = model.assetCollection->localIdentifier();
  return model;
}

}  // namespace nimbrel
