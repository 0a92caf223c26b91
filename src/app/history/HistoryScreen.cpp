#include "app/history/HistoryScreen.h"

#include <mutex>
#include <string_view>
#include <unordered_set>

#include "app/VC/UICollectionViewExtension.h"
#include "app/audio/MusicAuthorization.h"
#include "app/audio/MusicPlayerVC.h"
#include "app/audio/SongRecords.h"
#include "app/core/BasicMethod.h"
#include "app/core/Constant.h"
#include "app/core/IconName.h"
#include "app/documents/customFileManager.h"
#include "app/history/HistoryEntries.h"
#include "app/kit/AppThemeColor.h"
#include "app/media/AssetReaders.h"
#include "app/viewers/PhotosInfoVC.h"
#include "app/viewers/PreviewBuilder.h"
#include "platform/av/AVAssetExportSession.h"
#include "platform/av/AVPlayer.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FatalError.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/NSPathUtilities.h"
#include "platform/libs/SVProgressHUD.h"
#include "platform/photos/PHAssetResource.h"
#include "platform/photos/PHImageManager.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UIStoryboard.h"

namespace nimbrel {

using Sender = const std::shared_ptr<NSObject>&;

namespace {

std::string documentsDirectory() {
  auto documents = NSSearchPathForDirectoriesInDomains(NSDocumentDirectory, NSUserDomainMask, true);
  if (documents.empty()) fatalError("Index out of range", "Swift/ContiguousArrayBuffer.swift", 600);
  return documents.front();
}

const char* kindName(FileType kind) {
  switch (kind) {
    case FileType::docs: return "docs";
    case FileType::photo: return "photo";
    case FileType::video: return "video";
    case FileType::music: return "music";
  }
  return "";
}

}  // namespace

HistoryScreen::HistoryScreen() {
  registerAction("onMainFolderBtn:", [this](Sender s) { onHistoryMainFolderBtn(s); });
  registerAction("onDeleteBtn:", [](Sender) {});
}

BrowseSizes HistoryScreen::sizes() const {
  BrowseSizes table;
  table.listAlbumHeight = table.listItemHeight = 90;
  table.gridAlbumExtraHeight = table.gridItemExtraHeight = 0;
  return table;
}

void HistoryScreen::requestAccess(std::function<void()> granted) {
  requestMusicAccess(weakSelf<UIViewController>(), std::move(granted));
}

std::vector<File> HistoryScreen::foldedInMemory(std::vector<File> records) {
  // The set holds views into `records`, which stay in place until it is done with.
  std::unordered_set<std::string_view> seen;
  seen.reserve(records.size());
  std::vector<bool> first(records.size());
  size_t count = 0;
  for (size_t i = 0; i < records.size(); ++i) {
    first[i] = seen.insert(records[i].url.absoluteString()).second;
    count += first[i];
  }
  if (count == records.size()) return records;
  std::vector<File> kept;
  kept.reserve(count);
  for (size_t i = 0; i < records.size(); ++i) {
    if (first[i]) kept.push_back(std::move(records[i]));
  }
  return kept;
}

void HistoryScreen::setUpListCollection() {
  setUpCollection();
  installDidToggleSelectionOnAlbums();
}

bool HistoryScreen::isAdRow(long row) const {
  return viewModel->items.at(static_cast<size_t>(row))->item.name == "nativeAd";
}

// ---- Cells ----

void HistoryScreen::configureAlbumCell(albumsCollectionViewCell& cell, long row) {
  const auto& model = viewModel->items.at(static_cast<size_t>(row))->item;
  cell.lblAlbumName->setText(model.name);
  cell.lblNoOfItems->setText(model.size.getReadableUnit());
  auto url = URL::withString(model.identifier);
  if (!url) return;
  switch (model.fileType) {
    case FileType::docs: {
      cell.lblAlbumName->setText(url->lastPathComponent());
      std::string size = Units(historyFileSize(*url)).getReadableUnit();
      cell.lblNoOfItems->setText(isList ? listDateText(model.creationDate) + " " + size : size);
      cell.albumImg->setBackgroundColor(UIColor::whiteColor());
      cell.albumImg->setImage(UIImage::named(iconName(url->pathExtension())));
      break;
    }
    case FileType::photo:
    case FileType::video: {
      auto asset = historyAsset(*url);
      auto resources = PHAssetResource::assetResourcesForAsset(*asset);
      if (resources.empty()) fatalError("Index out of range", "Swift/ContiguousArrayBuffer.swift", 600);
      cell.lblAlbumName->setText(resources.front()->originalFilename());
      std::string size = assetSizeText(*asset);
      if (isList) {
        auto created = asset->creationDate();
        if (!created) fatalError("Unexpectedly found nil while unwrapping an Optional value", "Nimbrel/RecentFilesVC", 0);
        // Four blanks after a photo's date, one after a video's.
        cell.lblNoOfItems->setText(listDateText(*created) + (model.fileType == FileType::photo ? "    " : " ") + size);
      } else {
        cell.lblNoOfItems->setText(size);
      }
      requestThumbnail(cell, asset);
      break;
    }
    case FileType::music: {
      auto song = historySong(*url);
      cell.lblAlbumName->setText(song->title().value_or(std::string()));
      std::string size = Units(songFileSize(*song)).getReadableUnit();
      if (isList) {
        auto added = song->dateAdded();
        if (!added) fatalError("Unexpectedly found nil while unwrapping an Optional value", "Nimbrel/RecentFilesVC", 0);
        cell.lblNoOfItems->setText(listDateText(*added) + " " + size);
      } else {
        cell.lblNoOfItems->setText(size);
      }
      auto artwork = song->artwork();
      auto image = artwork ? artwork->imageWithSize(cell.frame().size) : std::nullopt;
      cell.albumImg->setImage(image ? image : Constant::musicPlaceholder());
      break;
    }
  }
}

// ---- Opening ----

void HistoryScreen::openEntry(long row) {
  NSLog("hello kitty");
  const auto& model = viewModel->items.at(static_cast<size_t>(row))->item;
  auto first = URL::withString(model.identifier);
  if (!first && openStopsBeforeRecording()) return;
  if (first) addRecentFile(*first, model.fileType);
  auto url = URL::withString(model.identifier);
  if (!url) return;
  switch (model.fileType) {
    case FileType::docs: {
      selectedUrl = *url;
      auto preview = std::make_shared<QLPreviewController>();
      preview->dataSource = std::shared_ptr<QLPreviewControllerDataSource>(strongSelf<HistoryScreen>());
      preview->delegate = std::shared_ptr<QLPreviewControllerDelegate>(strongSelf<HistoryScreen>());
      if (auto nav = navigationController()) nav->pushViewController(preview, true);
      break;
    }
    case FileType::photo:
    case FileType::video:
      openAsset(*url, model.fileType);
      break;
    case FileType::music: {
      auto song = historySong(*url);
      auto player = std::dynamic_pointer_cast<MusicPlayerVC>(
          UIStoryboard::storyboardWithName("Main").instantiateViewControllerWithIdentifier("MusicPlayerVC"));
      if (!player) fatalError("Could not cast value to 'MusicPlayerVC'", "Nimbrel/RecentFilesVC", 0);
      player->song = song;
      presentViewController(player, true, nullptr);
      break;
    }
  }
}

void HistoryScreen::openAsset(const URL& url, FileType kind) {
  auto asset = historyAsset(url);
  if (kind == FileType::photo) {
    // The viewer is picked by the asset itself, so a photo record of a video opens the video viewer.
    if (auto nav = navigationController()) nav->pushViewController(PreviewBuilder::build(asset), true);
    return;
  }
  auto self = strongSelf<HistoryScreen>();
  PHImageManager::defaultManager()->requestAVAssetForVideo(
      asset, nullptr, [self](std::shared_ptr<AVAsset> answer, const PHImageRequestInfo&) {
        auto urlAsset = std::dynamic_pointer_cast<AVURLAsset>(answer);
        if (!urlAsset) return;
        URL file = urlAsset->url();
        DispatchQueue::main().async([self, file] {
          auto player = AVPlayer::playerWithURL(file);
          auto controller = std::make_shared<AVPlayerViewController>();
          controller->delegate = std::shared_ptr<AVPlayerViewControllerDelegate>(self);
          controller->player = player;
          self->presentViewController(controller, true, [player] { player->play(); });
        });
      });
}

URL HistoryScreen::previewControllerPreviewItemAtIndex(QLPreviewController&, long) {
  if (!selectedUrl) fatalError("Unexpectedly found nil while unwrapping an Optional value", "Nimbrel/RecentFilesVC", 0);
  return *selectedUrl;
}

bool HistoryScreen::previewControllerShouldOpenURLForPreviewItem(QLPreviewController&, const URL& url, const URL& item) {
  if (selectedUrl && item == *selectedUrl) return true;
  NSLog("Will not open URL " + url.absoluteString());
  return false;
}

void HistoryScreen::previewControllerWillDismiss(QLPreviewController&) {
  dismissViewControllerAnimated(true, nullptr);
  NSLog("The Preview Controller will be dismissed.");
}

// ---- The path bar and the menu ----

void HistoryScreen::onHistoryMainFolderBtn(Sender) { backToAlbumsKeepingList(); }

void HistoryScreen::menuChose(const std::string& entry) {
  if (entry != "Edit") {
    BrowseScreen::menuChose(entry);
    return;
  }
  // The item list is empty; the list on show stays out of selection mode until a row is touched.
  if (!photoViewModel->isMultipleSelectionEnabled) enterSelectionModeOnItemList();
}


// ---- Share and info ----

void HistoryScreen::gatherShareItems(Sender, std::function<void(std::vector<UIActivityViewController::Item>)> share) {
  struct Box {
    std::mutex mutex;
    std::vector<URL> urls;
    void add(URL u) {
      std::lock_guard lock(mutex);
      urls.push_back(std::move(u));
    }
  };
  auto box = std::make_shared<Box>();
  size_t count = viewModel->selectedItems().size();
  for (size_t i = 0; i < count; ++i) {
    // The selection is read anew for each index.
    const auto& model = viewModel->selectedItems().at(i)->item;
    NSLog(std::string("URL : ") + kindName(model.fileType));
    auto url = URL::withString(model.identifier);
    if (url) {
      switch (model.fileType) {
        case FileType::docs:
          box->add(*url);
          break;
        case FileType::photo: {
          auto asset = historyAsset(*url);
          auto resources = PHAssetResource::assetResourcesForAsset(*asset);
          if (resources.empty()) fatalError("Index out of range", "Swift/ContiguousArrayBuffer.swift", 600);
          std::string name = resources.front()->originalFilename();
          // Whatever adjustment data there is, the platform is told it can be handled.
          asset->requestContentEditingInputWithOptions(
              PHContentEditingInputRequestOptions{}, [box, name](std::shared_ptr<PHContentEditingInput> input) {
                if (!input || !input->fullSizeImageURL()) return;
                std::string target = documentsDirectory() + "/" + name;
                auto copied = customFileManager::shared()->copyFile(*input->fullSizeImageURL(),
                                                                    URL::fileURLWithPath(target, false));
                if (!copied) return;
                box->add(*copied);
                box->add(URL::fileURLWithPath(target, false));
              });
          break;
        }
        case FileType::video: {
          auto asset = historyAsset(*url);
          auto resources = PHAssetResource::assetResourcesForAsset(*asset);
          if (resources.empty()) fatalError("Index out of range", "Swift/ContiguousArrayBuffer.swift", 600);
          std::string name = resources.front()->originalFilename();
          auto options = std::make_shared<PHVideoRequestOptions>();
          options->version = 1;
          PHImageManager::defaultManager()->requestAVAssetForVideo(
              asset, options.get(), [box, name](std::shared_ptr<AVAsset> answer, const PHImageRequestInfo&) {
                auto urlAsset = std::dynamic_pointer_cast<AVURLAsset>(answer);
                if (!urlAsset) return;
                std::string target = documentsDirectory() + "/" + name + ".mp4";
                auto copied = customFileManager::shared()->copyFile(urlAsset->url(), URL::fileURLWithPath(target, false));
                if (!copied) return;
                box->add(*copied);
                box->add(URL::fileURLWithPath(target, false));
              });
          break;
        }
        case FileType::music: {
          auto song = historySong(*url);
          auto session = std::make_shared<AVAssetExportSession>(AVURLAsset::assetWithURL(*url),
                                                                AVAssetExportPresetPassthrough);
          session->shouldOptimizeForNetworkUse = true;
          session->outputFileType = AVFileTypeCoreAudioFormat;
          URL output = URL::fileURLWithPath(documentsDirectory() + "/" + song->title().value_or("unknown") + ".caf", false);
          session->outputURL = output;
          session->exportAsynchronouslyWithCompletionHandler([session] {
            if (session->status() == AVAssetExportSessionStatus::failed) NSLog("export failed: " + session->errorDescription());
          });
          box->add(output);
          break;
        }
      }
    }
    // Each index schedules a presentation of what the box holds then; the first one shows.
    std::string printed;
    {
      std::lock_guard lock(box->mutex);
      for (const auto& u : box->urls) printed += (printed.empty() ? "" : ", ") + u.absoluteString();
    }
    NSLog("[" + printed + "]");
    SVProgressHUD::dismiss();
    DispatchQueue::main().asyncAfter(0.5, [box, share] {
      std::vector<UIActivityViewController::Item> items;
      {
        std::lock_guard lock(box->mutex);
        for (const auto& u : box->urls) items.emplace_back(u);
      }
      share(std::move(items));
    });
  }
}

void HistoryScreen::showInfoForSelection() {
  std::vector<PhotoModel> models;
  for (const auto& item : viewModel->selectedItems()) {
    auto url = URL::withString(item->item.identifier);
    if (!url) continue;
    PhotoModel model;
    model.size = Units(historyInfoSize(*url, item->item.fileType));
    models.push_back(std::move(model));
  }
  auto info = std::dynamic_pointer_cast<PhotosInfoVC>(
      UIStoryboard::storyboardWithName("Main").instantiateViewControllerWithIdentifier("PhotosInfoVC"));
  if (!info) fatalError("Could not cast value to 'PhotosInfoVC'", "Nimbrel/RecentFilesVC", 0);
  info->models = std::move(models);
  info->setModalPresentationStyle(UIModalPresentationStyle::overCurrentContext);
  presentViewController(info, false, nullptr);
  leaveSelectionMode();
}

}  // namespace nimbrel
