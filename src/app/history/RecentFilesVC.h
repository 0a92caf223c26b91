#pragma once

#include <vector>

#include "app/history/HistoryScreen.h"

namespace nimbrel {

// The recently opened files, newest first. A record never leaves from here: the delete is the
// images screen's album delete by the row's name, and a second build lists everything twice.
class RecentFilesVC : public HistoryScreen {
 public:
  static inline constexpr const char* kTypeName = "RecentFilesVC";
  const char* className() const override { return kTypeName; }
  RecentFilesVC();

  std::vector<PhotoModel> albumModelsArr;

  void buildList();

 protected:
  void firstLoad() override { buildList(); }
  bool offersInterstitialAtLoad() const override { return true; }
  bool setsUpCollectionAtLoad() const override { return false; }
  void deleteSelectedItems() override;
};

}  // namespace nimbrel
