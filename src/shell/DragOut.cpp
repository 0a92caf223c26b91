#include "shell/DragOut.h"

#include <algorithm>

#include "app/audio/AudioVC.h"
#include "app/core/AppData.h"
#include "app/core/File.h"
#include "app/core/HomeViewController.h"
#include "app/documents/DocumentVC.h"
#include "app/history/HistoryScreen.h"
#include "app/media/ImagesVC.h"
#include "platform/uikit/ShareActivities.h"
#include "platform/uikit/UICollectionView.h"
#include "shell/QtShareSurface.h"

namespace nimbrel::shell {

namespace {

template <class List>
const PhotoModel* photoAt(const List& list, long row) {
  if (row < 0 || static_cast<size_t>(row) >= list.items.size()) return nullptr;
  return &list.items[static_cast<size_t>(row)]->item;
}

std::optional<URL> addressOf(const std::string& identifier) {
  if (identifier.empty()) return std::nullopt;  // an ad's row
  return URL::withString(identifier);
}

// "Edit" on the documents and the history screens turns on the item list's flag while the album
// list is on show: either flag means the checkmarks show.
template <class Screen>
bool selecting(const Screen* screen) {
  return screen && (screen->viewModel->isMultipleSelectionEnabled || screen->photoViewModel->isMultipleSelectionEnabled);
}

}  // namespace

std::vector<long> draggedRows(const UICollectionView& collection, long row) {
  auto source = collection.dataSource();
  if (!selecting(dynamic_cast<const BrowseScreen<AlbumsViewModel>*>(source.get())) &&
      !selecting(dynamic_cast<const BrowseScreen<PhotosViewModel>*>(source.get()))) {
    return {row};
  }
  if (!collection.isSelected({0, row})) return {row};
  std::vector<long> rows;
  for (const auto& path : collection.indexPathsForSelectedItems()) {
    if (path.section == 0) rows.push_back(path.item);
  }
  std::sort(rows.begin(), rows.end());
  return rows;
}

std::optional<URL> rowAddress(const UICollectionView& collection, long row) {
  auto source = collection.dataSource();
  const auto* screen = source.get();
  if (dynamic_cast<const HomeViewController*>(screen)) {
    const auto& recents = AppData::shared()->recentFiles;
    if (row < 0 || static_cast<size_t>(row) >= recents.size()) return std::nullopt;
    return recents[static_cast<size_t>(row)].url;
  }
  if (auto images = dynamic_cast<const ImagesVC*>(screen)) {
    const PhotoModel* model = images->isAlBumsDisplay ? nullptr : photoAt(*images->photoViewModel, row);
    if (!model || !model->asset || model->asset->localIdentifier().empty()) return std::nullopt;
    FileType kind = model->asset->mediaType() == PHAssetMediaType::video ? FileType::video : FileType::photo;
    return URL::withString(assetAddress(model->asset->localIdentifier(), kind));
  }
  if (auto audio = dynamic_cast<const AudioVC*>(screen)) {
    const PhotoModel* model = audio->isAlBumsDisplay ? nullptr : photoAt(*audio->photoViewModel, row);
    return model ? addressOf(model->identifier) : std::nullopt;
  }
  if (auto history = dynamic_cast<const HistoryScreen*>(screen)) {
    const auto& items = history->viewModel->items;
    if (row < 0 || static_cast<size_t>(row) >= items.size() || items[static_cast<size_t>(row)]->item.name == "nativeAd") {
      return std::nullopt;
    }
    return addressOf(items[static_cast<size_t>(row)]->item.identifier);
  }
  if (auto documents = dynamic_cast<const DocumentVC*>(screen)) {
    const auto& items = documents->viewModel->items;
    if (!documents->isAlBumsDisplay || row < 0 || static_cast<size_t>(row) >= items.size()) return std::nullopt;
    return addressOf(items[static_cast<size_t>(row)]->item.identifier);
  }
  return std::nullopt;
}

bool mayDrag(const UICollectionView& collection, long row) {
  return ShareActivities::current() && rowAddress(collection, row);
}

QVariantMap dragMimeData(const UICollectionView& collection, long row) {
  auto activities = ShareActivities::current();
  if (!activities) return {};
  std::vector<ShareItem> items;
  for (long r : draggedRows(collection, row)) {
    if (auto address = rowAddress(collection, r)) items.emplace_back(*address);
  }
  if (items.empty()) return {};
  auto dragged = activities->dragFiles(items);
  if (dragged.uris.empty()) return {};
  return QtShareSurface::filesMimeMap(dragged.uris, dragged.text);
}

}  // namespace nimbrel::shell
