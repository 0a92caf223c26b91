#include "app/audio/AudioVC.h"

#include "app/audio/MusicAuthorization.h"
#include "app/audio/MusicPlayerVC.h"
#include "app/audio/SongRecords.h"
#include "app/core/BasicMethod.h"
#include "app/media/AssetReaders.h"
#include "app/viewers/InfoViewController.h"
#include "app/viewers/PhotosInfoVC.h"
#include "platform/av/AVAssetExportSession.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FatalError.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/NSPathUtilities.h"
#include "platform/libs/SVProgressHUD.h"
#include "platform/mediaplayer/MPMediaQuery.h"
#include "platform/uikit/UIStoryboard.h"

namespace nimbrel {

using Sender = const std::shared_ptr<NSObject>&;

AudioVC::AudioVC() {
  registerAction("onDeleteBtn:", [this](Sender s) { onDeleteBtn(s); });
  registerAction("onFavBtn:", [this](Sender s) { onFavBtn(s); });
  registerAction("onMainFolderBtn:", [this](Sender s) { onMainFolderBtnKeepingAlbums(s); });
}

void AudioVC::requestAccess(std::function<void()> granted) {
  requestMusicAccess(weakSelf<UIViewController>(), std::move(granted));
}

void AudioVC::loadAlbums() {
  audioAlbums = MPMediaQuery::albumsQuery()->collections();
  if (audioAlbums.empty()) return;  // the collection stays as the storyboard left it
  for (const auto& album : audioAlbums) albumModelsArr.push_back(albumRecord(*album));
  viewModel = AlbumsViewModel::withModels(albumModelsArr);
  auto self = strongSelf<AudioVC>();
  DispatchQueue::main().async([self] {
    self->albumsCollectionView->reloadData();
    self->setUpCollection();
    self->installDidToggleSelectionOnAlbums();
  });
}

std::string AudioVC::albumNameAtRow(long row) const {
  return viewModel->items.at(static_cast<size_t>(row))->item.name;
}

void AudioVC::loadItemsOfAlbum(long row) { loadSongs({audioAlbums.at(static_cast<size_t>(row))}); }

void AudioVC::loadSongs(const std::vector<std::shared_ptr<MPMediaItemCollection>>& albums) {
  isAlBumsDisplay = false;
  SVProgressHUD::show();
  songList.clear();
  std::vector<PhotoModel> models;
  for (size_t a = 0; a < albums.size(); ++a) {
    const auto& album = albums[a];
    for (size_t i = 0; i < album->count(); ++i) {
      // The platform hands out the album's items afresh on every read.
      auto song = album->items().at(i);
      songList.push_back(song);
      models.push_back(songRecord(*song));
      if (a + 1 != albums.size() || i + 1 != album->count()) continue;
      photoViewModel = PhotosViewModel::withModels(std::move(models));
      auto self = strongSelf<AudioVC>();
      DispatchQueue::main().async([self] {
        SVProgressHUD::dismiss();
        self->albumsCollectionView->reloadData();
        self->installDidToggleSelectionOnItems();
      });
    }
  }
}

void AudioVC::configureAlbumCell(albumsCollectionViewCell& cell, long row) {
  auto entry = viewModel->items.at(static_cast<size_t>(row));
  cell.item = entry;
  cell.lblAlbumName->setText(entry->item.name);
  cell.lblNoOfItems->setText(std::to_string(entry->item.count) + " Songs");
  if (auto song = audioAlbums.at(static_cast<size_t>(row))->representativeItem()) {
    cell.albumImg->setImage(songArtwork(*song, cell.frame().size));
  }
}

void AudioVC::configureItemCell(albumsCollectionViewCell& cell, long row) {
  const auto& model = photoViewModel->items.at(static_cast<size_t>(row))->item;
  cell.lblAlbumName->setText(model.name);
  std::string size = model.size.getReadableUnit();
  cell.lblNoOfItems->setText(isList ? listDateText(model.creationDate) + "    " + size : size);
  cell.albumImg->setImage(songArtwork(*songList.at(static_cast<size_t>(row)), cell.frame().size));
}

void AudioVC::logPrefetch(long row) {
  if (isAlBumsDisplay) return;
  (void)photoViewModel->items.at(static_cast<size_t>(row));
}

void AudioVC::openItemLevelRow(long row) {
  NSLog("hello kitty");
  const auto& model = photoViewModel->items.at(static_cast<size_t>(row))->item;
  auto url = URL::withString(model.identifier);
  if (!url) return;  // a song that is not on the device has no address
  addRecentFile(*url, FileType::music);
  auto player = std::dynamic_pointer_cast<MusicPlayerVC>(
      UIStoryboard::storyboardWithName("Main").instantiateViewControllerWithIdentifier("MusicPlayerVC"));
  if (!player) fatalError("Could not cast value to 'MusicPlayerVC'", "Nimbrel/AudioVC", 0);
  player->song = songList.at(static_cast<size_t>(row));
  presentViewController(player, true, nullptr);
}

void AudioVC::onMainFolderBtnKeepingAlbums(Sender) { backToAlbumsKeepingList(); }

void AudioVC::gatherShareItems(Sender, std::function<void(std::vector<UIActivityViewController::Item>)> share) {
  std::vector<std::pair<std::string, std::string>> songs;  // address, name
  for (const auto& item : photoViewModel->selectedItems()) songs.emplace_back(item->item.identifier, item->item.name);
  std::vector<UIActivityViewController::Item> urls;
  for (const auto& [address, name] : songs) {
    auto url = URL::withString(address);
    if (!url) continue;
    auto session = std::make_shared<AVAssetExportSession>(AVURLAsset::assetWithURL(*url), AVAssetExportPresetPassthrough);
    session->shouldOptimizeForNetworkUse = true;
    session->outputFileType = AVFileTypeCoreAudioFormat;
    auto documents = NSSearchPathForDirectoriesInDomains(NSDocumentDirectory, NSUserDomainMask, true);
    if (documents.empty()) fatalError("Index out of range", "Swift/ContiguousArrayBuffer.swift", 600);
    // The name goes into the path as it is: two songs of one name share one file.
    URL output = URL::fileURLWithPath(documents.front() + "/" + name + ".caf", false);
    session->outputURL = output;
    // Nobody waits for the export: the sheet offers the path whether it worked or not.
    session->exportAsynchronouslyWithCompletionHandler([session] {
      if (session->status() == AVAssetExportSessionStatus::failed) {
        NSLog("export failed: " + session->errorDescription());
      }
    });
    urls.emplace_back(output);
  }
  std::string printed;
  for (const auto& u : urls) printed += (printed.empty() ? "" : ", ") + std::get<URL>(u).absoluteString();
  NSLog("[" + printed + "]");
  SVProgressHUD::dismiss();
  DispatchQueue::main().async([share, urls = std::move(urls)]() mutable { share(std::move(urls)); });
}

void AudioVC::onFavBtn(Sender) {
  if (!isAlBumsDisplay) {
    std::vector<std::string> addresses;
    for (const auto& item : photoViewModel->selectedItems()) addresses.push_back(item->item.identifier);
    addFavouriteFiles(addresses, FileType::music);
  }
  leaveSelectionMode();
}

void AudioVC::showInfoForSelection() {
  auto selected = photoViewModel->selectedItems();
  auto storyboard = UIStoryboard::storyboardWithName("Main");
  if (selected.size() == 1) {
    auto info = std::dynamic_pointer_cast<InfoViewController>(storyboard.instantiateViewControllerWithIdentifier("InfoVC"));
    if (!info) fatalError("Could not cast value to 'InfoViewController'", "Nimbrel/AudioVC", 0);
    info->model = selected.front()->item;
    info->setModalPresentationStyle(UIModalPresentationStyle::overCurrentContext);
    presentViewController(info, false, nullptr);
  } else if (selected.size() >= 2) {
    auto info = std::dynamic_pointer_cast<PhotosInfoVC>(storyboard.instantiateViewControllerWithIdentifier("PhotosInfoVC"));
    if (!info) fatalError("Could not cast value to 'PhotosInfoVC'", "Nimbrel/AudioVC", 0);
    for (const auto& item : selected) info->models.push_back(item->item);
    info->setModalPresentationStyle(UIModalPresentationStyle::overCurrentContext);
    presentViewController(info, false, nullptr);
  }
}

}  // namespace nimbrel
