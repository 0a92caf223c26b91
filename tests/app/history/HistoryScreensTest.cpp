#include <gtest/gtest.h>

#include "app/SimTest.h"
#include "app/audio/MusicPlayerVC.h"
#include "app/core/AppData.h"
#include "app/history/FavouriteFilesVC.h"
#include "app/history/RecentFilesVC.h"
#include "platform/foundation/NSPathUtilities.h"
#include "platform/uikit/UIActivityViewController.h"

namespace nimbrel {
namespace {

std::string record(const std::string& url, const std::string& kind, double opened) {
  return R"({"url": ")" + url + R"(", "openingDate": )" + std::to_string(opened) + R"(, "filetype": ")" + kind + "\"}";
}

// Three documents, a photo (whose name is also an album's title) and two songs whose identifiers
// are one inside the other.
std::string library(const std::string& recents, const std::string& favourites = "", const std::string& extra = "") {
  return R"({"now": "2026-11-22T10:00:00Z", )" + extra + R"("preferences": {"isFirstTime": true, "kIsListView": true,
      "recentFiles": [)" + recents + R"(], "favFiles": [)" + favourites + R"(]},
    "documents": [{"name": "a.pdf", "size": 10}, {"name": "b.txt", "size": 20}, {"name": "c.doc", "size": 30}],
    "photos": {"assets": [{"id": "P1/L0/001", "filename": "Trip", "created": "2026-03-01T09:30:00Z"}],
               "albums": [{"id": "TRIP", "title": "Trip", "type": 1, "subtype": 2, "assets": ["P1/L0/001"]}]},
    "music": {"songs": [{"persistentID": "12345", "title": "Outer", "duration": 10},
                        {"persistentID": "234", "title": "Inner", "duration": 10}]}})";
}

class HistoryScreensTest : public testing::SimTest {
 protected:
  std::string doc(const std::string& name) {
    return "file://" + NSSearchPathForDirectoriesInDomains(NSDocumentDirectory, NSUserDomainMask, true).front() +
           "/Nimbrel/importedFiles/" + name;
  }
  std::vector<std::string> names(HistoryScreen& screen) {
    std::vector<std::string> out;
    screen.albumsCollectionView->layoutSubviews();
    for (long row = 0; row < screen.albumsCollectionView->numberOfItemsInSection(0); ++row) {
      auto cell = std::dynamic_pointer_cast<albumsCollectionViewCell>(screen.albumsCollectionView->cellForItemAtIndexPath({0, row}));
      out.push_back(*cell->lblAlbumName->text());
    }
    return out;
  }
};

TEST_F(HistoryScreensTest, AFreshInstallListsNothingAndNeverSetsUpItsCollection) {
  launchToHome(library(""));
  auto screen = pushedBy<RecentFilesVC>("onRecentBtn:");
  ASSERT_TRUE(screen);
  EXPECT_FALSE(screen->tap);
  EXPECT_EQ(screen->albumsCollectionView->numberOfItemsInSection(0), 0);
  nav()->popViewControllerAnimated(false);
  settle();
  auto favourites = pushedBy<FavouriteFilesVC>("onFavBtn:");
  EXPECT_TRUE(favourites->tap) << "the favourites set their gestures up at load";
}

TEST_F(HistoryScreensTest, RecentsFoldInMemoryResolveEachKindAndOpenByKind) {
  start(library(""));  // only for the documents folder's path
  std::string a = doc("a.pdf");
  platform.reset();
  launchToHome(library(record(a, "docs", 3e8) + "," + record(a, "docs", 2e8) + "," +
                       record("ipod-library://item/item.mp3?id=234", "music", 1e8)));
  auto screen = pushedBy<RecentFilesVC>("onRecentBtn:");
  EXPECT_EQ(names(*screen), (std::vector<std::string>{"a.pdf", "Outer"})) << "234 is inside 12345, which comes first";
  EXPECT_EQ(AppData::shared()->recentFiles.size(), 2u) << "the fold is written back in memory";
  ASSERT_TRUE(defaults().dataForKey("recentFiles"));
  tapRow(*screen, 1);
  auto player = std::dynamic_pointer_cast<MusicPlayerVC>(nav()->presentedViewController());
  ASSERT_TRUE(player);
  EXPECT_EQ(*player->song->title(), "Outer");
  EXPECT_EQ(AppData::shared()->recentFiles.size(), 3u);
  EXPECT_EQ(names(*screen).size(), 2u) << "the row stays where it was";
}

TEST_F(HistoryScreensTest, DeleteIsTheAlbumDeleteByNameAndTheRebuildShowsEverythingTwice) {
  launchToHome(library(record("assets-library://asset/asset.JPG?id=P1&extJPG", "photo", 3e8)));
  auto screen = pushedBy<RecentFilesVC>("onRecentBtn:");
  ASSERT_EQ(names(*screen), (std::vector<std::string>{"Trip"}));
  longPressRow(*screen, 0);
  press(*screen, "onDeletBtn:");
  EXPECT_EQ(names(*screen), (std::vector<std::string>{"Trip", "Trip"}));
  EXPECT_EQ(screen->albumsCollectionView->gestureRecognizers().size(), 4u) << "a second pair of recognisers";
  EXPECT_EQ(AppData::shared()->recentFiles.size(), 1u) << "the record itself stays";
}

TEST_F(HistoryScreensTest, CloseThenEditThenATapSelectsEveryRowAndThreeDocumentsShareTogether) {
  start(library(""));
  std::string a = doc("a.pdf"), b = doc("b.txt"), c = doc("c.doc");
  platform.reset();
  launchToHome(library(record(a, "docs", 3e8) + "," + record(b, "docs", 2e8) + "," + record(c, "docs", 1e8)));
  auto screen = pushedBy<RecentFilesVC>("onRecentBtn:");
  longPressRow(*screen, 0);
  screen->performAction("onCloseBtn:", nullptr);
  screen->menuChose("Edit");
  tapRow(*screen, 1);
  EXPECT_EQ(*screen->selectALLBtn->currentTitle(), "Deselect All") << "Close left every flag true";
  screen->performAction("onShareBtn:", screen->outlet("btnShare"));
  advance(0.6);
  auto sheet = std::dynamic_pointer_cast<UIActivityViewController>(nav()->presentedViewController());
  ASSERT_TRUE(sheet);
  EXPECT_EQ(sheet->activityItems().size(), 3u) << "the first of three presentations shows all";
  EXPECT_FALSE(screen->viewModel->isMultipleSelectionEnabled);
}

TEST_F(HistoryScreensTest, FavouritesComeOldestFirstAndLeaveByUnfavouriting) {
  start(library(""));
  std::string a = doc("a.pdf"), b = doc("b.txt");
  platform.reset();
  launchToHome(library("", record(a, "docs", 1e8) + "," + record(b, "docs", 2e8) + "," + record(a, "docs", 3e8),
                       R"("device": {"idiom": "pad", "screen": {"width": 1024, "height": 1366, "scale": 2}}, )"));
  auto screen = pushedBy<FavouriteFilesVC>("onFavBtn:");
  EXPECT_EQ(names(*screen), (std::vector<std::string>{"a.pdf", "b.txt"}));
  screen->performAction("onGridOrListBtn:", nullptr);
  auto size = screen->collectionViewLayoutSizeForItemAtIndexPath(*screen->albumsCollectionView, {0, 0});
  EXPECT_EQ(size.width, screen->albumsCollectionView->bounds().width() * 0.25) << "four columns on a pad";
  EXPECT_EQ(size.height, size.width);
  longPressRow(*screen, 0);
  press(*screen, "onUnFavBtn:");
  EXPECT_EQ(names(*screen), (std::vector<std::string>{"b.txt"})) << "the message is the e2e history scenario's";
  EXPECT_TRUE(screen->SelectEditView->isHidden());
  longPressRow(*screen, 0);
  press(*screen, "onUnFavBtn:");
  EXPECT_EQ(screen->albumsCollectionView->numberOfItemsInSection(0), 0) << "an emptied list shows empty";
  EXPECT_TRUE(favouriteModels().empty());
}

TEST_F(HistoryScreensTest, ARecordWhosePhotoHasGoneEndsTheListBuild) {
  launchToHome(library(""));
  // Home reads its strip only when it appears, so the record arrives while home stands.
  AppData::shared()->recentFiles = {File{*URL::withString("assets-library://asset/asset.JPG?id=GONE&extJPG"),
                                         Date::now(), FileType::photo}};
  EXPECT_DEATH(pushedBy<RecentFilesVC>("onRecentBtn:"), "index 0 beyond bounds for empty fetch result");
}

}  // namespace
}  // namespace nimbrel
