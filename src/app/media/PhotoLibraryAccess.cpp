#include "app/media/PhotoLibraryAccess.h"

#include <mutex>

#include "app/VC/SettingsRefusalAlert.h"
#include "app/core/AppData.h"
#include "app/core/BasicMethod.h"
#include "app/media/AlbumSources.h"
#include "platform/av/AVAsset.h"
#include "platform/foundation/DispatchGroup.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FatalError.h"
#include "platform/foundation/NSLog.h"
#include "platform/libs/SVProgressHUD.h"
#include "platform/photos/PHImageManager.h"
#include "platform/photos/PHPhotoLibrary.h"
#include "platform/uikit/ImageHeader.h"
#include "platform/uikit/UIAlertController.h"
#include "platform/uikit/UIApplication.h"

namespace nimbrel {

namespace {

constexpr const char* kAssetFile = "Nimbrel/PHAsset+Extension";
constexpr int kEditingInputLine = 62;

void presentAccessRefusal(UIViewController& screen) {
  presentSettingsRefusalAlert(
      screen, "Can not access Photos!",
      "You have not given permission for access Photos. \nGoto settings and give permission to access Photos.");
}

}  // namespace

void requestPhotoAccess(std::weak_ptr<UIViewController> screen, std::function<void()> whenAuthorized) {
  PHPhotoLibrary::requestAuthorization(
      [screen = std::move(screen), whenAuthorized = std::move(whenAuthorized)](PHAuthorizationStatus status) {
        NSLog("photo library authorization status " + std::to_string(static_cast<int>(status)));
        switch (status) {
          case PHAuthorizationStatus::restricted:
          case PHAuthorizationStatus::denied:
            DispatchQueue::main().async([screen] {
              if (auto s = screen.lock()) presentAccessRefusal(*s);
            });
            break;
          case PHAuthorizationStatus::authorized:
            DispatchQueue::main().async([whenAuthorized] {
              if (whenAuthorized) whenAuthorized();
            });
            break;
          case PHAuthorizationStatus::notDetermined:
          case PHAuthorizationStatus::limited:
            break;
        }
      });
}

std::shared_ptr<PHFetchOptions> mediaFetchOptions(const std::set<MediaTypes>& types) {
  auto options = std::make_shared<PHFetchOptions>();
  options->sortDescriptors = {NSSortDescriptor{"creationDate", false}};
  PHPredicateMediaTypeIn predicate;
  for (auto t : types) predicate.mediaTypes.push_back(platformMediaType(t));
  options->predicate = std::move(predicate);
  return options;
}

std::vector<std::shared_ptr<PHAssetCollection>> albumsForMediaType(MediaTypes type) {
  auto bare = std::make_shared<PHFetchOptions>();
  auto filter = mediaFetchOptions({type});
  std::vector<std::shared_ptr<PHAssetCollection>> candidates;
  for (const auto& result : fetchAlbumSources(bare.get())) {
    if (result.count() < 1) continue;
    candidates.insert(candidates.end(), result.begin(), result.end());
  }
  std::vector<std::shared_ptr<PHAssetCollection>> albums;
  for (const auto& album : candidates) {
    if (PHAsset::fetchAssetsInAssetCollection(*album, filter.get()).count() >= 1) albums.push_back(album);
  }
  return albums;
}

void fetchAlbumAssets(std::shared_ptr<PHAssetCollection> album, MediaTypes type,
                      std::function<void(long count, PHFetchResult<PHAsset> result)> completion) {
  auto options = mediaFetchOptions({type})->copy();
  if (!album) album = std::make_shared<PHAssetCollection>();
  DispatchQueue::global(QualityOfService::userInteractive)
      .async([album = std::move(album), options = std::move(options), completion = std::move(completion)] {
        auto result = PHAsset::fetchAssetsInAssetCollection(*album, options.get());
        long count = static_cast<long>(result.count());
        if (completion) completion(count, std::move(result));
      });
}

void requestAssetURL(std::shared_ptr<PHAsset> asset, std::function<void(std::optional<URL>)> completion) {
  if (!asset) return;
  switch (asset->mediaType()) {
    case PHAssetMediaType::image:
      asset->requestContentEditingInputWithOptions(
          PHContentEditingInputRequestOptions{}, [completion](std::shared_ptr<PHContentEditingInput> input) {
            if (!input) {
              fatalError("Unexpectedly found nil while unwrapping an Optional value", kAssetFile, kEditingInputLine);
            }
            if (completion) completion(input->fullSizeImageURL());
          });
      break;
    case PHAssetMediaType::video: {
      PHVideoRequestOptions options;
      options.version = 1;
      PHImageManager::defaultManager()->requestAVAssetForVideo(
          asset, &options, [completion](std::shared_ptr<AVAsset> media, const PHImageRequestInfo&) {
            if (!completion) return;
            if (auto file = as<AVURLAsset>(media)) {
              completion(file->url());
            } else {
              completion(std::nullopt);
            }
          });
      break;
    }
    case PHAssetMediaType::unknown:
    case PHAssetMediaType::audio:
      break;
  }
}

void requestShareImages(std::vector<std::shared_ptr<PHAsset>> assets,
                        std::function<void(std::vector<UIImage>)> completion) {
  struct Collected {
    std::mutex mutex;
    std::vector<UIImage> images;
  };
  auto collected = std::make_shared<Collected>();
  DispatchGroup group;
  auto manager = PHImageManager::defaultManager();
  for (const auto& asset : assets) {
    group.enter();
    PHImageRequestOptions options;
    options.networkAccessAllowed = true;
    options.resizeMode = 2;
    options.deliveryMode = 1;
    manager->requestImageDataForAsset(
        asset, &options,
        [collected, group](std::optional<Data> data, std::string, int, const PHImageRequestInfo& info) mutable {
          // No data: the group stays entered, so the completion never runs.
          if (!data) return;
          if (auto header = ImageHeader::read(*data)) {
            UIImage::Pixels pixels;
            pixels.width = header->width;
            pixels.height = header->height;
            // Where the data came from, so that a platform can hand the picture on as a file.
            if (info.fileURL) pixels.source = info.fileURL->path();
            std::lock_guard lock(collected->mutex);
            collected->images.push_back(UIImage::withPixels(std::move(pixels)));
          }
          group.leave();
        });
  }
  group.notify(DispatchQueue::main(), [collected, completion = std::move(completion)] {
    std::vector<UIImage> images;
    {
      std::lock_guard lock(collected->mutex);
      images = collected->images;
    }
    if (completion) completion(std::move(images));
  });
}

void deleteAssets(std::vector<std::shared_ptr<PHAsset>> assets, std::vector<URL> addresses,
                  std::function<void()> leaveSelectionModeOnMain, std::function<void()> reloadAlbumLevelOnMain) {
  PHPhotoLibrary::sharedPhotoLibrary().performChanges(
      [assets = std::move(assets)] { PHAssetChangeRequest::deleteAssets(assets); },
      [addresses = std::move(addresses), leave = std::move(leaveSelectionModeOnMain),
       reload = std::move(reloadAlbumLevelOnMain)](bool success, std::optional<NSError> error) {
        if (!success) {
          SVProgressHUD::showInfoWithStatus("Something Wrong.Not Deleted");
          DispatchQueue::main().async([leave] {
            if (leave) leave();
          });
          NSLog("not removed..");
          NSLog(error ? error->debugDescription() : std::string("nil"));
          return;
        }
        // The favourites belong to the main thread: forget and save them there, before the reload.
        DispatchQueue::main().async([addresses, reload] {
          auto data = AppData::shared();
          data->FavouriteFiles = filesExcluding(data->FavouriteFiles, addresses);
          saveFavouriteFiles(data->FavouriteFiles);
          if (reload) reload();
        });
        NSLog("removed");
      });
}

void deleteAlbumByTitle(const std::string& title, std::function<void()> removeSelectedItemsThenReloadOnMain) {
  PHFetchOptions options;
  options.predicate = PHPredicateTitleEquals{title};
  auto albums = PHAssetCollection::fetchAssetCollectionsWithType(PHAssetCollectionType::album,
                                                                 PHAssetCollectionSubtypeAny, &options);
  std::string notFound = "requested album " + title + " not found in photos";
  if (albums.count() == 0) {
    SVProgressHUD::showInfoWithStatus(notFound);
    NSLog(notFound);
    return;
  }
  PHPhotoLibrary::sharedPhotoLibrary().performChanges(
      [albums] { PHAssetCollectionChangeRequest::deleteAssetCollections(albums); },
      [title, notFound, onSuccess = std::move(removeSelectedItemsThenReloadOnMain)](bool success,
                                                                                   std::optional<NSError> error) {
        if (!success) {
          if (error) {
            SVProgressHUD::showInfoWithStatus(notFound);
            NSLog("request failed. please try again");
          }
          return;
        }
        NSLog(" " + title + " removed succesfully");
        SVProgressHUD::dismissWithDelay(0.3);
        SVProgressHUD::showSuccessWithStatus("Deleted Successfully From album.");
        DispatchQueue::main().async([onSuccess] {
          if (onSuccess) onSuccess();
        });
      });
}

}  // namespace nimbrel
