#pragma once

#include "app/media/PhotoModel.h"

namespace nimbrel {

// A row of a photo list and whether it is picked; rows are shared between the list and its cells.
class PhotosViewModelItem {
 public:
  PhotoModel item;
  bool isSelected = false;
};

}  // namespace nimbrel
