#include "app/media/photoHelper.h"

#include "app/media/Fetch.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/photos/PHImageManager.h"
#include "platform/photos/PHPhotoLibrary.h"

namespace nimbrel {

namespace {

photoHelper::AlbumResult firstAlbum(const PHFetchResult<PHAssetCollection>& found) {
  if (auto album = found.firstObject()) return photoHelper::AlbumResult::Asset{album};
  return photoHelper::AlbumResult::Error{};
}

}  // namespace

photoHelper::AlbumResult photoHelper::getAlbum(const std::string& name) {
  PHFetchOptions options;
  options.predicate = PHPredicateNonEmptyWithLocalizedTitle{name};
  return firstAlbum(PHAssetCollection::fetchAssetCollectionsWithType(PHAssetCollectionType::album,
                                                                     PHAssetCollectionSubtypeAny, &options));
}

void photoHelper::getOrCreateAlbum(const std::string& title, std::function<void(AlbumResult)> completion) {
  PHFetchOptions options;
  options.predicate = PHPredicateTitleEquals{title};
  auto found = PHAssetCollection::fetchAssetCollectionsWithType(PHAssetCollectionType::album,
                                                                PHAssetCollectionSubtypeAny, &options);
  if (found.count() > 0) {
    if (completion) completion(firstAlbum(found));
    return;
  }
  // Written by the change block, read by the completion that the library runs after it.
  auto placeholder = std::make_shared<PHObjectPlaceholder>();
  PHPhotoLibrary::sharedPhotoLibrary().performChanges(
      [title, placeholder] {
        *placeholder = PHAssetCollectionChangeRequest::creationRequestForAssetCollectionWithTitle(title)
                           .placeholderForCreatedAssetCollection();
      },
      [placeholder, completion = std::move(completion)](bool success, std::optional<NSError>) {
        if (!completion) return;
        if (!success) {
          completion(AlbumResult::Error{});
          return;
        }
        completion(firstAlbum(
            PHAssetCollection::fetchAssetCollectionsWithLocalIdentifiers({placeholder->localIdentifier}, nullptr)));
      });
}

void photoHelper::saveImage(const UIImage& image, std::shared_ptr<PHAssetCollection> album,
                            std::function<void(bool, std::optional<NSError>)> completion) {
  auto target = album ? std::move(album) : std::make_shared<PHAssetCollection>();
  PHPhotoLibrary::sharedPhotoLibrary().performChanges(
      [image, target] {
        auto created = PHAssetChangeRequest::creationRequestForAssetFromImage(image);
        auto change = PHAssetCollectionChangeRequest::changeRequestForAssetCollection(*target);
        change.addAssets({created.placeholderForCreatedAsset()});
      },
      [completion = std::move(completion)](bool success, std::optional<NSError> error) {
        if (completion) completion(success, std::move(error));
      });
}

photoHelper::AssetsResult photoHelper::getAssets(const PHAssetCollection& album, const FetchOptions& options) {
  PHFetchOptions fetch;
  fetch.sortDescriptors = {NSSortDescriptor{"creationDate", !options.newestFirst}};
  auto assets = PHAsset::fetchAssetsInAssetCollection(album, &fetch).objects();
  if (options.count > 0 && assets.size() > static_cast<size_t>(options.count)) {
    assets.resize(static_cast<size_t>(options.count));
  }
  return AssetsResult::Assets{std::move(assets)};
}

PHImageRequestOptions photoHelper::defaultImageOptions() {
  PHImageRequestOptions options;
  options.version = 2;
  options.deliveryMode = 1;
  options.resizeMode = 0;
  options.networkAccessAllowed = false;
  options.synchronous = true;
  return options;
}

AssetFetchResult<UIImage> photoHelper::getImages(const std::vector<std::shared_ptr<PHAsset>>& assets,
                                                 const FetchOptions& options,
                                                 const PHImageRequestOptions& requestOptions) {
  std::vector<UIImage> images;
  auto manager = PHImageManager::defaultManager();
  for (const auto& asset : assets) {
    CGSize size = options.size.value_or(CGSize{static_cast<CGFloat>(asset->pixelWidth()),
                                               static_cast<CGFloat>(asset->pixelHeight())});
    manager->requestImageForAsset(asset, size, PHImageContentMode::aspectFill, &requestOptions,
                                  [&images](std::optional<UIImage> image, const PHImageRequestInfo&) {
                                    if (image) images.push_back(std::move(*image));
                                  });
  }
  return AssetFetchResult<UIImage>::Assets{std::move(images)};
}

std::vector<std::shared_ptr<PHAssetCollection>> photoHelper::allAlbums() {
  PHFetchOptions options;
  options.sortDescriptors = {NSSortDescriptor{"localizedTitle", true}};
  std::vector<std::shared_ptr<PHAssetCollection>> albums;
  for (auto type : {PHAssetCollectionType::album, PHAssetCollectionType::smartAlbum}) {
    auto found = PHAssetCollection::fetchAssetCollectionsWithType(type, PHAssetCollectionSubtypeAny, &options);
    albums.insert(albums.end(), found.begin(), found.end());
  }
  return albums;
}

void photoHelper::getNewestAsset(std::function<void(AssetsResult)> completion) {
  // A copy: the shared options stay as other readers expect them.
  auto options = Fetch::shared()->assets()->options()->copy();
  options->fetchLimit = 1;
  DispatchQueue::global(QualityOfService::userInteractive)
      .async([options = std::move(options), completion = std::move(completion)] {
        auto newest = PHAsset::fetchAssetsWithOptions(options.get()).firstObject();
        if (!completion) return;
        if (newest) {
          completion(AssetsResult::Asset{newest});
        } else {
          completion(AssetsResult::Error{});
        }
      });
}

}  // namespace nimbrel
