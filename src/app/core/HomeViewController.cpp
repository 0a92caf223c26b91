#include "app/core/HomeViewController.h"

#include "app/ads/AppLovinAdId.h"
#include "app/VC/PopupMenu.h"
#include "app/core/AppData.h"
#include "app/core/BasicMethod.h"
#include "app/core/Constant.h"
#include "app/core/IconName.h"
#include "app/core/RecentFilesCollectionViewCell.h"
#include "app/media/Fetch.h"
#include "app/media/ImagesVC.h"
#include "app/media/MediaTypes.h"
#include "app/media/PhotoLibraryAccess.h"
#include "app/storage/StorageFigures.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FatalError.h"
#include "platform/foundation/NSByteCountFormatter.h"
#include "platform/foundation/NSLog.h"
#include "platform/libs/SVProgressHUD.h"
#include "platform/mediaplayer/MPMediaQuery.h"
#include "platform/photos/PHAsset.h"
#include "platform/photos/PHAssetResource.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UIStoryboard.h"

namespace nimbrel {

using Sender = const std::shared_ptr<NSObject>&;

HomeViewController::HomeViewController() {
  auto bind = [this](const char* selector, void (HomeViewController::*method)(Sender)) {
    registerAction(selector, [this, method](Sender sender) { (this->*method)(sender); });
  };
  bind("onStorageAnalysisBtn:", &HomeViewController::onStorageAnalysisBtn);
  bind("onFavBtn:", &HomeViewController::onFavBtn);
  bind("onDocumentBtn:", &HomeViewController::onDocumentBtn);
  bind("onAudioBtn:", &HomeViewController::onAudioBtn);
  bind("onRecentBtn:", &HomeViewController::onRecentBtn);
  bind("onImagesBtn:", &HomeViewController::onImagesBtn);
  bind("onVideoBtn:", &HomeViewController::onVideoBtn);
  bind("onMenuBtn:", &HomeViewController::onMenuBtn);
}

void HomeViewController::viewWillAppear(bool) {
  loadScreenNativeAd(appLovinNativeAd, weakSelf<NSObject>(), nativeAdview);
  setUpHeader();
  showStorageLine();
  showRecentStrip();
  NSLog("");
  NSLog("recent files: " + std::to_string(AppData::shared()->recentFiles.size()));
}

void HomeViewController::setUpHeader() {
  auto self = strongSelf<HomeViewController>();
  mainScrollView->setDelegate(std::shared_ptr<UIScrollViewDelegate>(self));
  HEADERView->setDelegate(std::shared_ptr<MGCollapsingHeaderDelegate>(self));
  HEADERView->setAlwaysCollapse(true);
  HEADERView->setMinimumHeaderHeight(50.0);
  // Handing the same constraint over again would make the header take a collapsed height for its
  // full one, and it would never expand after a return.
  if (HEADERView->collapsingConstraint() != heightOfHeaderViewConstant) {
    HEADERView->setCollapsingConstraint(heightOfHeaderViewConstant);
  }
  recentFileCollectionView->setDataSource(std::shared_ptr<UICollectionViewDataSource>(self));
  recentFileCollectionView->setDelegate(std::shared_ptr<UICollectionViewDelegate>(self));
}

void HomeViewController::showStorageLine() {
  std::int64_t total = volumeTotalBytes();
  std::int64_t used = checkedSub(total, importantUsageBytes());
  lblInternalStorage->setText(NSByteCountFormatter::stringFromByteCount(used, NSByteCountFormatterCountStyle::decimal) +
                              " / " + capacityText(total));
}

void HomeViewController::showRecentStrip() {
  // A fresh installation has no stored list: the strip's view stays as laid out.
  if (!refreshRecentFiles()) return;
  if (AppData::shared()->recentFiles.empty()) {
    recentFilesView->setHidden(true);
    view()->layoutIfNeeded();
  } else {
    recentFilesView->setHidden(false);
    view()->layoutIfNeeded();
    recentFileCollectionView->reloadData();
  }
}

// ---- Strip ----

long HomeViewController::collectionViewNumberOfItemsInSection(UICollectionView&, long) {
  return static_cast<long>(AppData::shared()->recentFiles.size());
}

CGSize HomeViewController::collectionViewLayoutSizeForItemAtIndexPath(UICollectionView& collectionView,
                                                                      const NSIndexPath&) {
  double w = collectionView.bounds().width();
  double side = (Constant::isIpad() ? w / 5 : w * 0.25) + 30.0;
  return {side, side};
}

void HomeViewController::requestThumbnail(RecentFilesCollectionViewCell& cell, const std::shared_ptr<PHAsset>& asset) {
  if (cell.fileImg->tag() != 0) imageManager->cancelImageRequest(static_cast<PHImageRequestID>(cell.fileImg->tag()));
  auto options = Fetch::shared()->preview()->photoOptions();
  std::weak_ptr<RecentFilesCollectionViewCell> weakCell = cell.strongSelf<RecentFilesCollectionViewCell>();
  PHImageRequestID id = imageManager->requestImageForAsset(
      asset, cell.fileImg->bounds().size, PHImageContentMode::aspectFill, options.get(),
      [weakCell](std::optional<UIImage> image, const PHImageRequestInfo&) {
        DispatchQueue::main().async([weakCell, image] {
          if (auto c = weakCell.lock()) c->fileImg->setImage(image);
        });
      });
  cell.fileImg->setTag(id);
}

std::shared_ptr<UICollectionViewCell> HomeViewController::collectionViewCellForItemAtIndexPath(
    UICollectionView& collectionView, const NSIndexPath& indexPath) {
  auto cell = std::dynamic_pointer_cast<RecentFilesCollectionViewCell>(
      collectionView.dequeueReusableCellWithReuseIdentifier("recentFilesCell", indexPath));
  cell->setBackgroundColor(UIColor::clearColor());
  cell->fileImg->updateLayer([](CALayer& layer) { layer.cornerRadius = 25; });
  cell->fileName->setHidden(true);
  const auto& recents = AppData::shared()->recentFiles;
  if (indexPath.item < 0 || static_cast<size_t>(indexPath.item) >= recents.size()) {
    fatalError("Index out of range", "Swift/ContiguousArrayBuffer.swift", 600);
  }
  const File& record = recents[static_cast<size_t>(indexPath.item)];
  switch (record.filetype) {
    case FileType::docs:
      cell->fileName->setText(record.url.lastPathComponent());
      cell->fileImg->setImage(UIImage::named(iconName(record.url.pathExtension())));
      break;
    case FileType::photo:
    case FileType::video: {
      auto options = std::make_shared<PHFetchOptions>();
      // A record whose asset has gone ends the process here: index 0 of an empty result.
      auto asset = PHAsset::fetchAssetsWithALAssetURLs({record.url}, options.get())[0];
      requestThumbnail(*cell, asset);
      auto again = PHAsset::fetchAssetsWithALAssetURLs({record.url}, options.get())[0];
      auto resources = PHAssetResource::assetResourcesForAsset(*again);
      if (!resources.empty()) cell->fileName->setText(resources.front()->originalFilename());
      break;
    }
    case FileType::music: {
      const std::string& address = record.url.absoluteString();
      std::string id = address.size() > 32 ? address.substr(32) : std::string();
      auto query = MPMediaQuery::songsQuery();
      query->addFilterPredicate(MPMediaPropertyPredicate::predicateWithValue(
          id, MPMediaItemPropertyPersistentID, MPMediaPredicateComparison::contains));
      auto items = query->items();
      if (!items || items->empty()) fatalError("Index out of range", "Swift/ContiguousArrayBuffer.swift", 600);
      const auto& song = items->front();
      std::optional<UIImage> picture;
      if (auto artwork = song->artwork()) picture = artwork->imageWithSize(cell->fileImg->frame().size);
      cell->fileImg->setImage(picture ? picture : Constant::musicPlaceholder());
      cell->fileName->setText(song->title().value_or(std::string()));
      break;
    }
  }
  long moreRow = Constant::isIpad() ? 4 : 3;
  cell->moreFilesView->setHidden(indexPath.item != moreRow);
  return cell;
}

void HomeViewController::collectionViewDidSelectItemAtIndexPath(UICollectionView&, const NSIndexPath&) {
  pushScene("RecentFilesVC");
}

// ---- Header ----

void HomeViewController::scrollViewDidScroll(UIScrollView&) {
  HEADERView->collapseWithScroll(*mainScrollView);
}

void HomeViewController::headerDidFinishCollapsing() { TitleView->setHidden(true); }
void HomeViewController::headerDidFinishExpanding() { TitleView->setHidden(false); }

// ---- Buttons ----

void HomeViewController::pushScene(const std::string& identifier) {
  auto nav = navigationController();
  if (!nav) return;
  auto controller = UIStoryboard::storyboardWithName("Main").instantiateViewControllerWithIdentifier(identifier);
  if (!controller) {
    fatalError("Storyboard (<UIStoryboard>) doesn't contain a view controller with identifier '" + identifier + "'",
               "UIStoryboard", 0);
  }
  nav->pushViewController(controller, true);
}

void HomeViewController::onStorageAnalysisBtn(Sender) {
  auto controller = UIStoryboard::storyboardWithName("Main").instantiateViewControllerWithIdentifier("StorageAnalysisVC");
  if (!controller) return;
  controller->setModalPresentationStyle(UIModalPresentationStyle::overFullScreen);
  presentViewController(controller, true, nullptr);
}

void HomeViewController::onFavBtn(Sender) { pushScene("FavouriteFilesVC"); }
void HomeViewController::onDocumentBtn(Sender) { pushScene("DocumentsVC"); }
void HomeViewController::onAudioBtn(Sender) { pushScene("AudioVC"); }
void HomeViewController::onRecentBtn(Sender) { pushScene("RecentFilesVC"); }
void HomeViewController::onImagesBtn(Sender) { openImages(MediaTypes::image); }
void HomeViewController::onVideoBtn(Sender) { openImages(MediaTypes::video); }

void HomeViewController::openImages(MediaTypes type) {
  Fetch::shared()->assets()->setSupportedMediaTypes({type});
  std::weak_ptr<HomeViewController> weak = strongSelf<HomeViewController>();
  DispatchQueue::main().asyncAfter(0.5, [weak, type] {
    auto self = weak.lock();
    if (!self) return;
    auto screen = std::dynamic_pointer_cast<ImagesVC>(
        UIStoryboard::storyboardWithName("Main").instantiateViewControllerWithIdentifier("ImagesVC"));
    if (!screen) fatalError("Could not cast value to 'ImagesVC'", "Nimbrel/HomeViewController", 0);
    screen->mediatype = type;
    screen->albums = albumsForMediaType(type);
    if (auto nav = self->navigationController()) nav->pushViewController(screen, true);
  });
}

void HomeViewController::presentLater(const std::string& identifier) {
  auto controller = UIStoryboard::storyboardWithName("Main").instantiateViewControllerWithIdentifier(identifier);
  if (!controller) return;
  controller->setModalPresentationStyle(UIModalPresentationStyle::overFullScreen);
  std::weak_ptr<HomeViewController> weak = strongSelf<HomeViewController>();
  DispatchQueue::main().asyncAfter(0.5, [weak, controller] {
    if (auto self = weak.lock()) self->presentViewController(controller, true, nullptr);
  });
}

void HomeViewController::clearRecentFiles() {
  AppData::shared()->recentFiles.clear();
  recentFileCollectionView->reloadData();
  saveRecentFiles({});
  recentFilesView->setHidden(true);
  view()->layoutIfNeeded();
  SVProgressHUD::showSuccessWithStatus("Clear recent data successfully...");
}

void HomeViewController::onMenuBtn(Sender sender) {
  auto anchor = std::dynamic_pointer_cast<UIView>(sender);
  if (!anchor) anchor = btnMenu;
  std::weak_ptr<HomeViewController> weak = strongSelf<HomeViewController>();
  showPopupMenu(*this, anchor, {"Clear recent files", "Storage analysis", "Settings"}, false, false,
                [weak](long index) {
                  auto self = weak.lock();
                  if (!self) return;
                  if (index == 0) self->clearRecentFiles();
                  if (index == 1) self->presentLater("StorageAnalysisVC");
                  if (index == 2) self->presentLater("SettingVC");
                });
}

}  // namespace nimbrel
