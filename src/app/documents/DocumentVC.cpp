#include "app/documents/DocumentVC.h"

#include "app/VC/UICollectionViewExtension.h"
#include "app/audio/MusicAuthorization.h"
#include "app/core/AppData.h"
#include "app/core/BasicMethod.h"
#include "app/kit/AppThemeColor.h"
#include "app/documents/customFileManager.h"
#include "app/media/AssetReaders.h"
#include "app/media/Units.h"
#include "app/viewers/InfoViewController.h"
#include "app/viewers/PhotosInfoVC.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FatalError.h"
#include "platform/foundation/NSFileManager.h"
#include "platform/foundation/NSLog.h"
#include "platform/libs/SVProgressHUD.h"
#include "platform/uikit/UIDevice.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UIStoryboard.h"

namespace nimbrel {

namespace {

using Sender = const std::shared_ptr<NSObject>&;

std::int64_t fileSize(const URL& url) {
  auto attributes = NSFileManager::defaultManager().attributesOfItemAtPath(url.path(), nullptr);
  return attributes ? attributes->size : 0;
}

template <class T>
std::shared_ptr<T> instantiateMain(const char* identifier, const char* typeName) {
  auto controller = std::dynamic_pointer_cast<T>(
      UIStoryboard::storyboardWithName("Main").instantiateViewControllerWithIdentifier(identifier));
  if (!controller) fatalError(std::string("Could not cast value to '") + typeName + "'", "Nimbrel/DocumentVC", 0);
  return controller;
}

}  // namespace

DocumentVC::DocumentVC() {
  registerAction("onOpenDocumentOicker:", [this](Sender s) { onOpenDocumentOicker(s); });
  registerAction("onFavBtn:", [this](Sender s) { onFavBtn(s); });
  registerAction("onDeletBtn:", [this](Sender s) { onDocumentsDeletBtn(s); });
  registerAction("onMainFolderBtn:", [this](Sender s) { onDocumentsMainFolderBtn(s); });
}

AlbumModel DocumentVC::documentModel(const URL& url) {
  AlbumModel model;
  model.name = url.pathExtension();
  model.count = 0;
  model.identifier = url.absoluteString();
  return model;
}

BrowseSizes DocumentVC::sizes() const {
  BrowseSizes table;
  table.listAlbumHeight = 120;
  table.listItemHeight = 120;
  table.gridWidthPhone = [](double w) { return w * 0.25; };
  table.gridWidthPad = [](double w) { return w / 5; };
  table.gridAlbumExtraHeight = 50;
  table.gridItemExtraHeight = 50;
  return table;
}

// The music library's answer gates this list too: refusing it leaves the documents unlisted.
void DocumentVC::requestAccess(std::function<void()> granted) {
  requestMusicAccess(weakSelf<UIViewController>(), std::move(granted));
}

// ---- The list ----

void DocumentVC::installSelectionClosure() {
  bool hadSelection = !viewModel->selectedItems().empty();
  installDidToggleSelectionOnAlbums();
  std::weak_ptr<AlbumsViewModel> weakList = viewModel;
  auto frames = viewModel->didToggleSelection;
  viewModel->didToggleSelection = [frames, weakList](bool hasSelection) {
    frames(hasSelection);
    if (auto list = weakList.lock(); list && !hasSelection) list->setAllSelected(false);
  };
  if (!hadSelection) viewModel->setAllSelected(false);
}

void DocumentVC::showListAfterChange() {
  auto weak = weakSelf<DocumentVC>();
  // One turn later, as the platform's main-queue hop does, though this already runs on main.
  DispatchQueue::main().async([weak] {
    auto self = weak.lock();
    if (!self) return;
    self->albumsCollectionView->reloadData();
    self->installSelectionClosure();
  });
}

void DocumentVC::reloadDocuments() {
  albumModelsArr.clear();
  auto urls = customFileManager::shared()->listFiles(customFileManager::kImportedFolder);
  if (!urls) return;
  if (urls->empty()) {
    viewModel = std::make_shared<AlbumsViewModel>();
    albumsCollectionView->reloadData();
    installSelectionClosure();
    return;
  }
  albumModelsArr.reserve(urls->size());
  for (const auto& url : *urls) albumModelsArr.push_back(documentModel(url));
  viewModel = AlbumsViewModel::withModels(albumModelsArr);
  showListAfterChange();
}

bool DocumentVC::isAdRow(long row) const {
  return viewModel->items.at(static_cast<size_t>(row))->item.name == "nativeAd";
}

void DocumentVC::configureAlbumCell(albumsCollectionViewCell& cell, long row) {
  auto entry = viewModel->items.at(static_cast<size_t>(row));
  cell.item = entry;
  if (auto url = URL::withString(entry->item.identifier)) {
    cell.lblAlbumName->setText(url->lastPathComponent());
    auto attributes = NSFileManager::defaultManager().attributesOfItemAtPath(url->path(), nullptr);
    std::string size = Units(attributes ? attributes->size : 0).getReadableUnit();
    if (isList) {
      // The date is taken as present.
      if (!attributes || !attributes->creationDate) {
        fatalError("Unexpectedly found nil while unwrapping an Optional value", "Nimbrel/DocumentVC", 214);
      }
      cell.lblNoOfItems->setText(listDateText(*attributes->creationDate) + " " + size);
    } else {
      cell.lblNoOfItems->setText(size);
    }
  }
  cell.albumImg->setBackgroundColor(UIColor::whiteColor());
  cell.albumImg->setImage(UIImage::named(customFileManager::shared()->iconName(entry->item.name)));
}

// ---- Import ----

void DocumentVC::onOpenDocumentOicker(Sender) {
  auto picker = std::make_shared<UIDocumentPickerViewController>(
      std::vector<std::string>{"public.text", "public.data", "public.pdf", "public.doc"}, UIDocumentPickerMode::import);
  picker->delegate = std::shared_ptr<UIDocumentPickerDelegate>(strongSelf<DocumentVC>());
  picker->setModalPresentationStyle(UIModalPresentationStyle::fullScreen);
  if (auto popover = picker->popoverPresentationController()) popover->sourceView = view();
  presentViewController(picker, true, nullptr);
}

void DocumentVC::documentPickerWasCancelled(UIDocumentPickerViewController&) {
  dismissViewControllerAnimated(true, nullptr);
}

void DocumentVC::documentPickerDidPickDocumentAtURL(UIDocumentPickerViewController&, const URL& source) {
  auto files = customFileManager::shared();
  std::string destination = files->destinationPath(source, customFileManager::kImportedFolder);
  NSLog("nimbrelPath: " + destination);
  URL destinationURL = URL::fileURLWithPath(destination);
  bool isFolder = true;
  bool exists = NSFileManager::defaultManager().fileExistsAtPath(destinationURL.path(), &isFolder);
  NSLog(std::string("Is Folder Exe : ") + (exists && isFolder ? "true" : "false"));
  auto moved = files->moveFile(source.path(), destination);
  if (!moved) {
    // One message for every reason a move fails; the file that holds the name stays.
    SVProgressHUD::showInfoWithStatus("Enable to Move At FilesPath(Already Exists.)...");
    return;
  }
  NSLog("newpath: " + moved->absoluteString());
  AlbumModel model = documentModel(*moved);
  if (viewModel->items.empty()) {
    viewModel = AlbumsViewModel::withModels({model});
    auto weak = weakSelf<DocumentVC>();
    DispatchQueue::main().async([weak, model] {
      auto self = weak.lock();
      if (!self) return;
      self->albumModelsArr.push_back(model);
      self->albumsCollectionView->reloadData();
      self->installSelectionClosure();
    });
    return;
  }
  albumModelsArr.push_back(model);
  auto item = std::make_shared<AlbumsViewModelItem>();
  item->item = model;
  viewModel->items.push_back(item);
  showListAfterChange();
}

// ---- Opening and the preview ----

void DocumentVC::openAlbumLevelRow(long row) {
  auto url = URL::withString(viewModel->items.at(static_cast<size_t>(row))->item.identifier);
  if (!url) return;
  selectedUrl = url;
  NSLog(url->absoluteString());
  addRecentFile(*url, FileType::docs);
  auto preview = std::make_shared<QLPreviewController>();
  auto self = strongSelf<DocumentVC>();
  preview->dataSource = std::shared_ptr<QLPreviewControllerDataSource>(self);
  preview->delegate = std::shared_ptr<QLPreviewControllerDelegate>(self);
  if (auto nav = navigationController()) nav->pushViewController(preview, true);
}

URL DocumentVC::previewControllerPreviewItemAtIndex(QLPreviewController&, long) {
  if (!selectedUrl) fatalError("Unexpectedly found nil while unwrapping an Optional value", "Nimbrel/DocumentVC", 380);
  return *selectedUrl;
}

// The item, not the link, is compared: links inside the selected document are followed.
bool DocumentVC::previewControllerShouldOpenURLForPreviewItem(QLPreviewController&, const URL& url, const URL& item) {
  if (selectedUrl && *selectedUrl == item) return true;
  NSLog("Will not open URL " + url.absoluteString());
  return false;
}

void DocumentVC::previewControllerWillDismiss(QLPreviewController&) {
  dismissViewControllerAnimated(true, nullptr);
  NSLog("The Preview Controller will be dismissed.");
}

// ---- Selection and the edit bar ----

std::vector<std::string> DocumentVC::selectedIdentifiers() const {
  std::vector<std::string> out;
  for (const auto& item : viewModel->selectedItems()) out.push_back(item->item.identifier);
  return out;
}

void DocumentVC::menuChose(const std::string& entry) {
  if (entry != "Edit") {
    BrowseScreen::menuChose(entry);
    return;
  }
  // Guarded by the item list's flag, which nothing here clears: "Edit" works once per screen.
  if (!photoViewModel->isMultipleSelectionEnabled) enterSelectionModeOnItemList();
}


void DocumentVC::onDocumentsDeletBtn(Sender) {
  auto identifiers = selectedIdentifiers();
  if (identifiers.empty()) return;
  auto files = customFileManager::shared();
  std::vector<URL> removed;
  for (size_t i = 0; i < identifiers.size(); ++i) {
    const auto& identifier = identifiers[i];
    if (!files->removeFile(URL::withString(identifier))) {
      SVProgressHUD::showErrorWithStatus("Something Wrong.Please try again later....");
      reloadDocuments();
      continue;
    }
    for (const auto& model : albumModelsArr) {
      if (model.identifier != identifier) continue;
      NSLog("Fav " + identifier);
      NSLog("Doc " + model.identifier);
      if (auto url = URL::withString(model.identifier)) removed.push_back(*url);
    }
    if (i + 1 == identifiers.size()) {
      auto data = AppData::shared();
      data->FavouriteFiles = filesExcluding(data->FavouriteFiles, removed);
      saveFavouriteFiles(data->FavouriteFiles);
      SVProgressHUD::showSuccessWithStatus("Deleted Successfully..");
      reloadDocuments();
    }
  }
}

void DocumentVC::onFavBtn(Sender) {
  addFavouriteFiles(selectedIdentifiers(), FileType::docs);
  leaveSelectionMode();
}

void DocumentVC::gatherShareItems(Sender, std::function<void(std::vector<UIActivityViewController::Item>)> share) {
  auto identifiers = selectedIdentifiers();
  if (identifiers.empty()) return;  // the overlay stays up
  std::vector<UIActivityViewController::Item> items;
  for (const auto& identifier : identifiers) {
    if (auto url = URL::withString(identifier)) items.emplace_back(*url);
  }
  SVProgressHUD::dismiss();
  share(std::move(items));
}

void DocumentVC::showInfoForSelection() {
  auto identifiers = selectedIdentifiers();
  if (identifiers.empty()) return;
  if (identifiers.size() == 1) {
    auto info = instantiateMain<InfoViewController>("InfoVC", "InfoViewController");
    info->asset = nullptr;
    info->documentURL = URL::withString(identifiers.front());
    info->isDocumentURL = true;
    info->setModalPresentationStyle(UIModalPresentationStyle::overCurrentContext);
    presentViewController(info, false, nullptr);
    return;
  }
  auto info = instantiateMain<PhotosInfoVC>("PhotosInfoVC", "PhotosInfoVC");
  for (const auto& identifier : identifiers) {
    auto url = URL::withString(identifier);
    if (!url) continue;
    PhotoModel model;
    model.creationDate = Date::now();
    model.fileType = FileType::photo;
    model.size = Units(fileSize(*url));
    info->models.push_back(model);
  }
  info->setModalPresentationStyle(UIModalPresentationStyle::overCurrentContext);
  presentViewController(info, false, nullptr);
}

// The path bar here only resets the chrome: it reads nothing from the disk.
void DocumentVC::onDocumentsMainFolderBtn(Sender) { backToAlbumsKeepingList(); }

}  // namespace nimbrel
