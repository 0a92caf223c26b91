#pragma once

#include <vector>

#include "app/history/HistoryScreen.h"

namespace nimbrel {

// The rows of the last favourites build, kept for the whole process.
std::vector<PhotoModel>& favouriteModels();

// The favourite files, oldest first; a selection can be taken out of the favourites.
class FavouriteFilesVC : public HistoryScreen {
 public:
  static inline constexpr const char* kTypeName = "FavouriteFilesVC";
  const char* className() const override { return kTypeName; }
  FavouriteFilesVC();

  void buildList();
  void onUnFavBtn(const std::shared_ptr<NSObject>& sender);

 protected:
  void firstLoad() override { buildList(); }
  bool openStopsBeforeRecording() const override { return true; }
};

}  // namespace nimbrel
