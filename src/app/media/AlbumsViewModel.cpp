#include "app/media/AlbumsViewModel.h"

#include "app/media/SelectAllRule.h"

namespace nimbrel {

std::shared_ptr<AlbumsViewModel> AlbumsViewModel::withModels(std::vector<AlbumModel> models) {
  auto model = std::make_shared<AlbumsViewModel>();
  model->items.reserve(models.size());
  for (auto& m : models) {
    auto row = std::make_shared<AlbumsViewModelItem>();
    row->item = std::move(m);
    model->items.push_back(std::move(row));
  }
  return model;
}

std::vector<std::shared_ptr<AlbumsViewModelItem>> AlbumsViewModel::selectedItems() const {
  std::vector<std::shared_ptr<AlbumsViewModelItem>> picked;
  for (const auto& row : items) {
    if (row->isSelected) picked.push_back(row);
  }
  return picked;
}

void AlbumsViewModel::setAllSelected(bool selected) {
  for (const auto& row : items) row->isSelected = selected;
}

void AlbumsViewModel::selectAll() {
  selectAllRows(*this);
}

}  // namespace nimbrel
