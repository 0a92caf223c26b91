#include "app/viewers/PreviewBuilder.h"

#include "app/viewers/LivePreviewViewController.h"
#include "app/viewers/VideoPreviewViewController.h"

namespace nimbrel {

std::shared_ptr<PreviewViewController> PreviewBuilder::build(const std::shared_ptr<PHAsset>& asset) {
  if (asset && asset->mediaType() == PHAssetMediaType::image && asset->mediaSubtypes() == PHAssetMediaSubtypePhotoLive) {
    auto viewer = LivePreviewViewController::make();
    viewer->storeAsset(asset);
    viewer->imageLoad();
    viewer->liveLoad();
    return viewer;
  }
  if (asset && asset->mediaType() == PHAssetMediaType::video) {
    auto viewer = VideoPreviewViewController::make();
    viewer->storeAsset(asset);
    viewer->imageLoad();
    viewer->videoLoad();
    return viewer;
  }
  auto viewer = PreviewViewController::make();
  viewer->setAsset(asset);
  return viewer;
}

}  // namespace nimbrel
