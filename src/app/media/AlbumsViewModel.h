#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "app/media/AlbumsViewModelItem.h"
#include "platform/foundation/NSObject.h"

namespace nimbrel {

// The rows of one load of an album list. A reload makes a new list instead of refilling this one.
// Main thread.
class AlbumsViewModel : public NSObject {
 public:
  bool isMultipleSelectionEnabled = false;
  std::vector<std::shared_ptr<AlbumsViewModelItem>> items;
  std::function<void(bool)> didToggleSelection, IsSelectedAll, IsDeSelectedAll;

  // Every row unpicked, in the models' order.
  static std::shared_ptr<AlbumsViewModel> withModels(std::vector<AlbumModel> models);
  // The picked rows, in list order, read anew at every call.
  std::vector<std::shared_ptr<AlbumsViewModelItem>> selectedItems() const;
  void setAllSelected(bool selected);
  // Asks `IsSelectedAll` whether everything is picked; see selectAllRows.
  void selectAll();
};

}  // namespace nimbrel
