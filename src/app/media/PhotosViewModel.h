#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "app/media/PhotosViewModelItem.h"
#include "platform/foundation/NSObject.h"

namespace nimbrel {

// The rows of one load of a photo list. A reload makes a new list instead of refilling this one.
// Main thread.
class PhotosViewModel : public NSObject {
 public:
  bool isMultipleSelectionEnabled = false;
  std::vector<std::shared_ptr<PhotosViewModelItem>> items;
  std::function<void(bool)> didToggleSelection, IsSelectedAll, IsDeSelectedAll;

  // Every row unpicked, in the models' order.
  static std::shared_ptr<PhotosViewModel> withModels(std::vector<PhotoModel> models);
  // The picked rows, in list order, read anew at every call.
  std::vector<std::shared_ptr<PhotosViewModelItem>> selectedItems() const;
  void setAllSelected(bool selected);
  // Asks `IsSelectedAll` whether everything is picked; see selectAllRows.
  void selectAll();
};

}  // namespace nimbrel
