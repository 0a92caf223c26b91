#include "app/media/PhotosViewModel.h"

#include "app/media/SelectAllRule.h"

namespace nimbrel {

std::shared_ptr<PhotosViewModel> PhotosViewModel::withModels(std::vector<PhotoModel> models) {
  auto model = std::make_shared<PhotosViewModel>();
  model->items.reserve(models.size());
  for (auto& m : models) {
    auto row = std::make_shared<PhotosViewModelItem>();
    row->item = std::move(m);
    model->items.push_back(std::move(row));
  }
  return model;
}

std::vector<std::shared_ptr<PhotosViewModelItem>> PhotosViewModel::selectedItems() const {
  std::vector<std::shared_ptr<PhotosViewModelItem>> picked;
  for (const auto& row : items) {
    if (row->isSelected) picked.push_back(row);
  }
  return picked;
}

void PhotosViewModel::setAllSelected(bool selected) {
  for (const auto& row : items) row->isSelected = selected;
}

void PhotosViewModel::selectAll() {
  selectAllRows(*this);
}

}  // namespace nimbrel
