#include "app/media/PhotoModel.h"

namespace nimbrel {

PhotoModel PhotoModel::empty() {
  return PhotoModel{};
}

PhotoModel PhotoModel::fromAsset(const std::shared_ptr<PHAsset>& asset) {
  PhotoModel model;
  if (asset) model.asset = asset;
  model.identifier = model.asset->localIdentifier();
  model.creationDate = model.asset->creationDate().value_or(Date::now());
  // Audio and unknown items have no kind of their own among the remembered kinds.
  model.fileType = model.asset->mediaType() == PHAssetMediaType::video ? FileType::video : FileType::photo;
  return model;
}

}  // namespace nimbrel
