#include "app/history/FavouriteFilesVC.h"

#include "app/core/AppData.h"
#include "app/core/BasicMethod.h"
#include "app/history/HistoryEntries.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/NSByteCountFormatter.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/SharedInstance.h"
#include "platform/libs/SVProgressHUD.h"

namespace nimbrel {

namespace {
struct FavouriteModels {
  std::vector<PhotoModel> models;
};
}  // namespace

std::vector<PhotoModel>& favouriteModels() { return SharedInstance<FavouriteModels>::get()->models; }

FavouriteFilesVC::FavouriteFilesVC() {
  registerAction("onUnFavBtn:", [this](const std::shared_ptr<NSObject>& s) { onUnFavBtn(s); });
  registerAction("onSelectedItemsDeleteBtn:", [](const std::shared_ptr<NSObject>&) {});
}

void FavouriteFilesVC::buildList() {
  favouriteModels().clear();
  auto& favourites = AppData::shared()->FavouriteFiles;
  favourites = foldedInMemory(std::move(favourites));
  for (const auto& record : favourites) {
    PhotoModel model = historyModel(record, false);
    NSLog(NSByteCountFormatter::stringFromByteCount(model.size.bytes, NSByteCountFormatterCountStyle::file));
    favouriteModels().push_back(std::move(model));
  }
  auto self = strongSelf<FavouriteFilesVC>();
  if (!favourites.empty()) {
    viewModel = PhotosViewModel::withModels(favouriteModels());
    DispatchQueue::main().async([self] {
      self->albumsCollectionView->reloadData();
      self->installDidToggleSelectionOnAlbums();
    });
  } else {
    viewModel = std::make_shared<PhotosViewModel>();
    albumsCollectionView->reloadData();
    installDidToggleSelectionOnAlbums();
  }
  std::string listed;
  for (const auto& model : favouriteModels()) listed += (listed.empty() ? "" : ", ") + model.identifier;
  NSLog("Fav File : [" + listed + "]");
}

void FavouriteFilesVC::onUnFavBtn(const std::shared_ptr<NSObject>&) {
  auto selected = viewModel->selectedItems();
  if (selected.empty()) return;
  std::vector<URL> urls;
  for (const auto& item : selected) {
    if (auto url = URL::withString(item->item.identifier)) urls.push_back(*url);
  }
  auto& favourites = AppData::shared()->FavouriteFiles;
  favourites = filesExcluding(favourites, urls);
  saveFavouriteFiles(favourites);
  buildList();
  SVProgressHUD::showSuccessWithStatus(" Mark asUnFavourite....");
}

}  // namespace nimbrel
