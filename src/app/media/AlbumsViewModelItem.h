#pragma once

#include "app/media/AlbumModel.h"

namespace nimbrel {

// A row of an album list and whether it is picked; rows are shared between the list and its cells.
class AlbumsViewModelItem {
 public:
  AlbumModel item;
  bool isSelected = false;
};

}  // namespace nimbrel
