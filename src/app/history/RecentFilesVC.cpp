#include "app/history/RecentFilesVC.h"

#include "app/core/AppData.h"
#include "app/history/HistoryEntries.h"
#include "app/media/PhotoLibraryAccess.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FatalError.h"
#include "platform/foundation/NSByteCountFormatter.h"
#include "platform/foundation/NSLog.h"

namespace nimbrel {

RecentFilesVC::RecentFilesVC() {
  registerAction("onDeletBtn:", [this](const std::shared_ptr<NSObject>& s) { onDeletBtn(s); });
}

void RecentFilesVC::buildList() {
  auto& recents = AppData::shared()->recentFiles;
  recents = foldedInMemory(std::move(recents));  // in memory only: the preferences keep their twins
  if (recents.empty()) return;
  for (const auto& record : recents) {
    PhotoModel model = historyModel(record, true);
    NSLog(NSByteCountFormatter::stringFromByteCount(model.size.bytes, NSByteCountFormatterCountStyle::file));
    albumModelsArr.push_back(std::move(model));
  }
  // The models of every build so far: a second build shows each entry twice.
  viewModel = PhotosViewModel::withModels(albumModelsArr);
  auto self = strongSelf<RecentFilesVC>();
  DispatchQueue::main().async([self] {
    self->albumsCollectionView->reloadData();
    self->setUpListCollection();
  });
}

void RecentFilesVC::deleteSelectedItems() {
  auto selected = viewModel->selectedItems();
  if (selected.empty()) fatalError("Index out of range", "Swift/ContiguousArrayBuffer.swift", 600);
  std::weak_ptr<RecentFilesVC> weak = strongSelf<RecentFilesVC>();
  deleteAlbumByTitle(selected.front()->item.name, [weak] {
    auto self = weak.lock();
    if (!self) return;
    std::erase_if(self->photoViewModel->items, [](const auto& item) { return item->isSelected; });
    self->viewModel->items.clear();
    self->closeBtnView->setHidden(true);
    self->selectALLBtn->setHidden(true);
    self->headerSelectionView->setHidden(true);
    self->albumsCollectionView->setTag(0);
    if (self->tap) self->tap->setEnabled(true);
    self->selectALLBtn->setTitle(std::string("Select All"));
    self->selectAllCehckmark->setSelected(false);
    self->buildList();
    self->onHistoryMainFolderBtn(nullptr);
  });
}

}  // namespace nimbrel
