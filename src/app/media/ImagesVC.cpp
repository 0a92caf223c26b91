#include "app/media/ImagesVC.h"

#include "app/core/AppData.h"
#include "app/core/BasicMethod.h"
#include "app/documents/customFileManager.h"
#include "app/media/AssetReaders.h"
#include "app/media/PhotoLibraryAccess.h"
#include "app/media/PhotoModel.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FatalError.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/NSPathUtilities.h"
#include "platform/libs/SVProgressHUD.h"
#include "platform/photos/PHImageManager.h"
#include "app/viewers/InfoViewController.h"
#include "app/viewers/PhotosInfoVC.h"
#include "app/viewers/PreviewBuilder.h"
#include "platform/av/AVPlayer.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UIStoryboard.h"

namespace nimbrel {

std::optional<URL> assetURL(const std::string& identifier, FileType kind) {
  // The first non-empty part of the identifier split at "/".
  std::string first;
  size_t start = 0;
  while (start <= identifier.size()) {
    size_t end = identifier.find('/', start);
    if (end == std::string::npos) end = identifier.size();
    if (end > start) {
      first = identifier.substr(start, end - start);
      break;
    }
    start = end + 1;
  }
  if (first.empty()) fatalError("Index out of range", "Swift/ContiguousArrayBuffer.swift", 600);
  return URL::withString(assetAddress(first, kind));
}

ImagesVC::ImagesVC() {
  registerAction("onDeletBtn:", [this](const std::shared_ptr<NSObject>& s) { onDeletBtn(s); });
  registerAction("onDeleteBtn:", [this](const std::shared_ptr<NSObject>& s) { onDeleteBtn(s); });
  registerAction("onFavBtn:", [this](const std::shared_ptr<NSObject>& s) { onFavBtn(s); });
}

void ImagesVC::requestAccess(std::function<void()> granted) {
  requestPhotoAccess(weakSelf<UIViewController>(), std::move(granted));
}

void ImagesVC::firstLoad() { loadAlbumLevel(false); }
void ImagesVC::reloadAlbums() { loadAlbumLevel(true); }

void ImagesVC::loadAlbumLevel(bool reload) {
  {
    std::lock_guard lock(loadMutex_);
    albumModelsArr.clear();
  }
  albums = albumsForMediaType(mediatype);
  if (albums.empty()) return;
  auto self = strongSelf<ImagesVC>();
  long last = static_cast<long>(albums.size()) - 1;
  for (long i = 0; i <= last; ++i) {
    auto album = albums[static_cast<size_t>(i)];
    fetchAlbumAssets(album, mediatype, [self, album, i, last, reload](long count, PHFetchResult<PHAsset> result) {
      // Completions arrive concurrently in any order; the list is closed by the last index's
      // completion, so albums whose completion comes after it are gathered but not listed.
      std::vector<AlbumModel> closed;
      {
        std::lock_guard lock(self->loadMutex_);
        if (auto model = AlbumModel::fromAlbum(album, count, result)) self->albumModelsArr.push_back(*model);
        if (i != last) return;
        closed = self->albumModelsArr;
      }
      DispatchQueue::main().async([self, closed = std::move(closed), reload]() mutable {
        if (reload) self->isAlBumsDisplay = true;
        self->viewModel = AlbumsViewModel::withModels(std::move(closed));
        if (reload) {
          self->installDidToggleSelectionOnAlbums();
          self->albumsCollectionView->setContentOffset({0, 0}, true);
          self->albumsCollectionView->reloadData();
        } else {
          self->albumsCollectionView->reloadData();
          self->installDidToggleSelectionOnAlbums();
          NSLog(std::to_string(self->viewModel->items.size()));
        }
      });
    });
  }
}

std::string ImagesVC::albumNameAtRow(long row) const {
  return viewModel->items.at(static_cast<size_t>(row))->item.name;
}

void ImagesVC::loadItemsOfAlbum(long row) {
  const auto& album = viewModel->items.at(static_cast<size_t>(row))->item;
  isAlBumsDisplay = false;
  SVProgressHUD::show();
  const auto& result = album.albumFetchResult;
  if (result.count() == 0) return;  // the overlay stays up; a listed album is never empty
  std::vector<PhotoModel> models;
  models.reserve(result.count());
  for (size_t i = 0; i < result.count(); ++i) models.push_back(PhotoModel::fromAsset(result[i]));
  photoViewModel = PhotosViewModel::withModels(std::move(models));
  auto self = strongSelf<ImagesVC>();
  DispatchQueue::main().async([self] {
    SVProgressHUD::dismiss();
    self->albumsCollectionView->reloadData();
    self->installDidToggleSelectionOnItems();
  });
}

bool ImagesVC::isAdRow(long row) const {
  if (isAlBumsDisplay) return viewModel->items.at(static_cast<size_t>(row))->item.name == "nativeAd";
  return photoViewModel->items.at(static_cast<size_t>(row))->item.name == "nativeAd";
}

std::shared_ptr<UICollectionViewCell> ImagesVC::makeAdRowCell() {
  auto cell = std::make_shared<UICollectionViewCell>();
  if (nativeAdArr.empty()) fatalError("Index out of range", "Swift/ContiguousArrayBuffer.swift", 600);
  appLovinNativeAdCollection->render(2, nativeAdArr.front(), cell);
  return cell;
}

void ImagesVC::configureAlbumCell(albumsCollectionViewCell& cell, long row) {
  auto entry = viewModel->items.at(static_cast<size_t>(row));
  cell.item = entry;
  cell.lblAlbumName->setText(entry->item.name);
  cell.lblNoOfItems->setText(std::to_string(entry->item.count) + " items");
  cell.asset = entry->item.albumAsset;
  requestThumbnail(cell, entry->item.albumAsset);
}

void ImagesVC::configureItemCell(albumsCollectionViewCell& cell, long row) {
  const auto& model = photoViewModel->items.at(static_cast<size_t>(row))->item;
  const auto& asset = model.asset;
  cell.asset = asset;
  std::string size = assetSizeText(*asset);
  cell.lblAlbumName->setText(assetFileName(*asset).value_or(std::string()));
  if (isList) {
    auto created = asset->creationDate();
    if (!created) fatalError("Unexpectedly found nil while unwrapping an Optional value", "Nimbrel/ImagesVC", 412);
    cell.lblNoOfItems->setText(listDateText(*created) + "    " + size);
  } else {
    cell.lblNoOfItems->setText(size);
  }
  requestThumbnail(cell, asset);
}

void ImagesVC::logPrefetch(long row) {
  if (isAlBumsDisplay) {
    NSLog("prefetch album " + viewModel->items.at(static_cast<size_t>(row))->item.name);
  } else {
    NSLog("prefetch item " + photoViewModel->items.at(static_cast<size_t>(row))->item.identifier);
  }
}

void ImagesVC::openItemLevelRow(long row) {
  NSLog("hello kitty");
  auto asset = photoViewModel->items.at(static_cast<size_t>(row))->item.asset;
  if (mediatype == MediaTypes::image) {
    if (auto url = assetURL(asset->localIdentifier(), FileType::photo)) addRecentFile(*url, FileType::photo);
    auto viewer = PreviewBuilder::build(asset);
    if (auto nav = navigationController()) nav->pushViewController(viewer, true);
    return;
  }
  // A video opened here is remembered as a photo with its ".MOV" address.
  if (auto url = assetURL(asset->localIdentifier(), FileType::video)) addRecentFile(*url, FileType::photo);
  openVideoInSystemPlayer(asset);
}

void ImagesVC::openVideoInSystemPlayer(const std::shared_ptr<PHAsset>& asset) {
  auto self = strongSelf<ImagesVC>();
  PHImageManager::defaultManager()->requestAVAssetForVideo(
      asset, nullptr, [self](std::shared_ptr<AVAsset> answer, const PHImageRequestInfo&) {
        auto urlAsset = std::dynamic_pointer_cast<AVURLAsset>(answer);
        if (!urlAsset) return;
        URL url = urlAsset->url();
        DispatchQueue::main().async([self, url] {
          auto player = AVPlayer::playerWithURL(url);
          auto controller = std::make_shared<AVPlayerViewController>();
          controller->delegate = std::shared_ptr<AVPlayerViewControllerDelegate>(self);
          controller->player = player;
          self->presentViewController(controller, true, [player] { player->play(); });
        });
      });
}

void ImagesVC::gatherShareItems(const std::shared_ptr<NSObject>&,
                                std::function<void(std::vector<UIActivityViewController::Item>)> share) {
  std::vector<std::shared_ptr<PHAsset>> assets;
  for (const auto& item : photoViewModel->selectedItems()) assets.push_back(item->item.asset);
  if (mediatype == MediaTypes::image) {
    requestShareImages(assets, [share](std::vector<UIImage> images) {
      SVProgressHUD::dismiss();
      std::vector<UIActivityViewController::Item> items(images.begin(), images.end());
      share(std::move(items));
    });
    return;
  }
  // Videos: the copies that are done after half a second are shared; the overlay stays.
  struct Gathered {
    std::mutex mutex;
    std::vector<URL> urls;
  };
  auto gathered = std::make_shared<Gathered>();
  for (const auto& asset : assets) {
    auto options = std::make_shared<PHVideoRequestOptions>();
    options->version = 1;
    PHImageManager::defaultManager()->requestAVAssetForVideo(
        asset, options.get(), [gathered](std::shared_ptr<AVAsset> answer, const PHImageRequestInfo&) {
          auto urlAsset = std::dynamic_pointer_cast<AVURLAsset>(answer);
          if (!urlAsset) return;
          const URL& u = urlAsset->url();
          auto documents = NSSearchPathForDirectoriesInDomains(NSDocumentDirectory, NSUserDomainMask, true);
          if (documents.empty()) fatalError("Index out of range", "Swift/ContiguousArrayBuffer.swift", 600);
          auto target = URL::fileURLWithPath(documents.front() + "/" + u.lastPathComponent() + ".mp4", false);
          auto copied = customFileManager::shared()->copyFile(u, target);
          std::lock_guard lock(gathered->mutex);
          gathered->urls.push_back(copied.value_or(target));
        });
  }
  DispatchQueue::main().asyncAfter(0.5, [gathered, share] {
    std::vector<UIActivityViewController::Item> items;
    {
      std::lock_guard lock(gathered->mutex);
      for (const auto& u : gathered->urls) items.emplace_back(u);
    }
    share(std::move(items));
  });
}

void ImagesVC::deleteSelectedItems() {
  std::vector<std::shared_ptr<PHAsset>> assets;
  std::vector<URL> addresses;
  for (const auto& item : photoViewModel->selectedItems()) {
    const auto& asset = item->item.asset;
    assets.push_back(asset);
    FileType kind = asset->mediaType() == PHAssetMediaType::image ? FileType::photo : FileType::video;
    if (auto url = assetURL(asset->localIdentifier(), kind)) addresses.push_back(*url);
  }
  std::weak_ptr<ImagesVC> weak = strongSelf<ImagesVC>();
  deleteAssets(
      assets, addresses,
      [weak] {
        if (auto self = weak.lock()) self->leaveSelectionMode();
      },
      [weak] {
        if (auto self = weak.lock()) self->returnToAlbumLevel(false);
      });
}

void ImagesVC::deleteFirstSelectedAlbum() {
  auto selected = viewModel->selectedItems();
  if (selected.empty()) fatalError("Index out of range", "Swift/ContiguousArrayBuffer.swift", 600);
  std::weak_ptr<ImagesVC> weak = strongSelf<ImagesVC>();
  deleteAlbumByTitle(selected.front()->item.name, [weak] {
    auto self = weak.lock();
    if (!self) return;
    std::erase_if(self->photoViewModel->items, [](const auto& item) { return item->isSelected; });
    self->returnToAlbumLevel(false);
  });
}

void ImagesVC::onFavBtn(const std::shared_ptr<NSObject>&) {
  if (imgFav) imgFav->setImage(UIImage::named("ic_fav"));
  if (!isAlBumsDisplay) {
    FileType kind = mediatype == MediaTypes::image ? FileType::photo : FileType::video;
    std::vector<std::string> addresses;
    for (const auto& item : photoViewModel->selectedItems()) {
      if (auto url = assetURL(item->item.asset->localIdentifier(), kind)) addresses.push_back(url->absoluteString());
    }
    addFavouriteFiles(addresses, kind);
  }
  leaveSelectionMode();
}

void ImagesVC::showInfoForSelection() {
  auto selected = photoViewModel->selectedItems();
  if (selected.size() == 1) {
    auto info = std::dynamic_pointer_cast<InfoViewController>(
        UIStoryboard::storyboardWithName("Main").instantiateViewControllerWithIdentifier("InfoVC"));
    if (!info) fatalError("Could not cast value to 'InfoViewController'", "Nimbrel/ImagesVC", 0);
    info->asset = selected.front()->item.asset;
    info->setModalPresentationStyle(UIModalPresentationStyle::overCurrentContext);
    presentViewController(info, false, nullptr);
  } else if (selected.size() >= 2) {
    auto info = std::dynamic_pointer_cast<PhotosInfoVC>(
        UIStoryboard::storyboardWithName("Main").instantiateViewControllerWithIdentifier("PhotosInfoVC"));
    if (!info) fatalError("Could not cast value to 'PhotosInfoVC'", "Nimbrel/ImagesVC", 0);
    for (const auto& item : selected) info->models.push_back(item->item);
    info->setModalPresentationStyle(UIModalPresentationStyle::overCurrentContext);
    presentViewController(info, false, nullptr);
  }
}

}  // namespace nimbrel
