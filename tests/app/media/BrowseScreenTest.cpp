// The frame on a small screen of its own: one list of items at the album flag, selection mode
// there, and a tap recogniser that is only disabled, never detached.
#include "app/media/BrowseScreen.h"

#include <gtest/gtest.h>

#include "app/ads/AppLovinNativeAdManual.h"
#include "app/core/ApplicationMain.h"
#include "app/SimTest.h"
#include "app/media/PhotoModel.h"
#include "app/media/PhotosViewModel.h"
#include "app/storyboard/BrowseScene.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UINavigationController.h"

namespace nimbrel {
namespace {

class ListScreen : public BrowseScreen<PhotosViewModel> {
 public:
  std::vector<std::string> names;
  std::vector<long> opened;
  bool accessGranted = true;

 protected:
  BrowseSizes sizes() const override {
    BrowseSizes s;
    s.listAlbumHeight = 90;
    s.gridAlbumExtraHeight = 0;
    return s;
  }
  void requestAccess(std::function<void()> granted) override {
    if (accessGranted) DispatchQueue::main().async(std::move(granted));
  }
  void firstLoad() override {
    std::vector<PhotoModel> models;
    for (const auto& n : names) {
      PhotoModel m = PhotoModel::empty();
      m.name = n;
      models.push_back(m);
    }
    viewModel = PhotosViewModel::withModels(std::move(models));
    albumsCollectionView->reloadData();
    installDidToggleSelectionOnAlbums();
  }
  void openAlbumLevelRow(long row) override { opened.push_back(row); }
  void configureAlbumCell(albumsCollectionViewCell& cell, long row) override {
    cell.lblAlbumName->setText(viewModel->items.at(static_cast<size_t>(row))->item.name);
  }
  bool selectionAtAlbumLevel() const override { return true; }
  bool detachesTapInSelectionMode() const override { return false; }
};

class BrowseScreenTest : public testing::SimTest {
 protected:
  std::shared_ptr<ListScreen> open(std::vector<std::string> names, bool accessGranted = true) {
    launchToHome(R"({"preferences": {"isFirstTime": true, "kIsListView": true}})");
    auto screen = std::make_shared<ListScreen>();
    screen->names = std::move(names);
    screen->accessGranted = accessGranted;
    screen->setSceneLoader([](UIViewController& vc) {
      buildBrowseScene(static_cast<ListScreen&>(vc), {"Test", "Test", "Test", "onFavBtn:"});
    });
    nav()->pushViewController(screen, true);
    settle();
    return screen;
  }
};

TEST_F(BrowseScreenTest, ATapOutsideSelectionModeOpensOneTurnLaterAndSelectionOnlyDisablesTheTap) {
  auto s = open({"a", "b", "c"});
  s->albumsCollectionView->layoutSubviews();
  s->tap->recognize(UIGestureRecognizerState::ended, s->albumsCollectionView->centerOfItemAtIndexPath({0, 2}));
  EXPECT_TRUE(s->opened.empty()) << "the tap acts through a hop to the main queue";
  settle();
  EXPECT_EQ(s->opened, std::vector<long>{2});
  s->tap->recognize(UIGestureRecognizerState::ended, {1, 100000});
  settle();
  EXPECT_EQ(s->opened, std::vector<long>{2}) << "a tap on the gap opens nothing";

  // Selection at the album flag only disables the tap.
  longPressRow(*s, 1);
  EXPECT_TRUE(s->isSelectionModeOn());
  EXPECT_FALSE(s->tap->isEnabled());
  EXPECT_TRUE(s->tap->view()) << "this screen keeps its recogniser attached";
  EXPECT_EQ(s->viewModel->selectedItems().size(), 1u);
  tapRow(*s, 2);
  EXPECT_EQ(s->viewModel->selectedItems().size(), 2u);
  EXPECT_EQ(s->opened, std::vector<long>{2});
}

TEST_F(BrowseScreenTest, CellSizesFollowTheScreensTableRowAndTheLayout) {
  auto s = open({"a"});
  auto& cv = *s->albumsCollectionView;
  double w = cv.bounds().width();
  EXPECT_EQ(cv.frameForItemAtIndexPath({0, 0}).size, (CGSize{w, 90}));
  press(*s, "onGridOrListBtn:");
  EXPECT_EQ(cv.frameForItemAtIndexPath({0, 0}).size, (CGSize{w / 3, w / 3}));
}

// The select-all rule's whole table is BrowseModelsTest's; here the screen's closure, title and
// collection follow it with and without a loaded ad.
TEST_F(BrowseScreenTest, SelectAllFollowsItsTableWithAndWithoutALoadedAd) {
  // One row picked, with and without a loaded ad.
  const std::tuple<bool, size_t, const char*> rows[] = {{true, 3, "DeSelect All"}, {false, 0, "Select All"}};
  for (auto [ad, after, title] : rows) {
    SCOPED_TRACE(ad ? "ad loaded" : "no ad");
    auto s = open({"a", "b", "c"});
    if (ad) AppLovinNativeAdManual::shared()->arrNativeAd.push_back(MAAd{});
    longPressRow(*s, 0);
    press(*s, "onSelectAllBtn:");
    EXPECT_EQ(s->viewModel->selectedItems().size(), after);
    EXPECT_EQ(s->selectALLBtn->currentTitle(), title);
    EXPECT_EQ(s->albumsCollectionView->indexPathsForSelectedItems().size(), after);
    platform.reset();
  }
}

TEST_F(BrowseScreenTest, CloseLeavesEveryRowFlaggedAndTheChromeHidden) {
  auto s = open({"a", "b"});
  longPressRow(*s, 0);
  press(*s, "onCloseBtn:");
  EXPECT_FALSE(s->isSelectionModeOn());
  EXPECT_TRUE(s->closeBtnView->isHidden());
  EXPECT_TRUE(s->SelectEditView->isHidden());
  EXPECT_EQ(s->albumsCollectionView->tag(), 0);
  EXPECT_TRUE(s->tap->isEnabled());
  EXPECT_EQ(s->viewModel->selectedItems().size(), 2u);
}

TEST_F(BrowseScreenTest, WithoutAccessTheListStaysEmptyAndSilent) {
  auto screen = open({"a"}, false);
  EXPECT_EQ(screen->albumsCollectionView->numberOfItemsInSection(0), 0);
}
}  // namespace
}  // namespace nimbrel
