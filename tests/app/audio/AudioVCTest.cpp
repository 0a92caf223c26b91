#include "app/audio/AudioVC.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "app/SimTest.h"
#include "app/audio/MusicPlayerVC.h"
#include "app/core/AppData.h"
#include "app/core/HomeViewController.h"
#include "app/viewers/InfoViewController.h"
#include "app/viewers/PhotosInfoVC.h"
#include "platform/foundation/NSPathUtilities.h"
#include "platform/libs/SVProgressHUD.h"
#include "platform/uikit/UIActivityViewController.h"
#include "platform/uikit/UIAlertController.h"

namespace nimbrel {
namespace {

// "Sea": two songs called "Blue" and one only in the cloud; "One": one song without artwork.
std::string library(const std::string& permissions = "") {
  return R"({"now": "2026-11-22T10:00:00Z", )" + permissions + R"("music": {"songs": [
  {"persistentID": "11", "title": "Blue", "albumTitle": "Sea", "duration": 61.9, "fileSize": 4800000,
   "dateAdded": "2025-01-02T03:04:00Z"},
  {"persistentID": "12", "title": "Blue", "albumTitle": "Sea", "duration": 10},
  {"persistentID": "13", "title": "Cloud", "albumTitle": "Sea", "hasAssetURL": false},
  {"persistentID": "21", "title": "Solo", "albumTitle": "One", "artwork": false}]}})";
}

class AudioVCTest : public testing::SimTest {
 protected:
  std::shared_ptr<AudioVC> open(const std::string& fixture = library()) {
    launchToHome(fixture);
    return pushedBy<AudioVC>("onAudioBtn:");
  }
  std::shared_ptr<albumsCollectionViewCell> cell(AudioVC& screen, long row) {
    screen.albumsCollectionView->layoutSubviews();
    return std::dynamic_pointer_cast<albumsCollectionViewCell>(
        screen.albumsCollectionView->cellForItemAtIndexPath({0, row}));
  }
  void select(AudioVC& screen, std::initializer_list<long> rows) {
    auto point = screen.albumsCollectionView->centerOfItemAtIndexPath({0, *rows.begin()});
    screen.longPress->recognize(UIGestureRecognizerState::began, point);
    settle();
    for (auto row = rows.begin() + 1; row != rows.end(); ++row) tapRow(screen, *row);
  }
};

// The album rows, the song rows in the list and a tap that plays and is remembered are the e2e
// music_album_song_player scenario's.
TEST_F(AudioVCTest, RefusedMusicShowsTheAlertAndLeavesAScreenWithoutRowsOrGestures) {
  auto screen = open(library(R"("permissions": {"music": 1}, )"));
  auto alert = std::dynamic_pointer_cast<UIAlertController>(nav()->presentedViewController());
  ASSERT_TRUE(alert);
  EXPECT_EQ(alert->alertTitle(), "Can not access Music Library!");
  EXPECT_EQ(alert->message(),
            "You have not given permission for access Music. \nGoto settings and give permission to access Music.");
  EXPECT_EQ(alert->actions().size(), 2u);
  EXPECT_FALSE(screen->tap);
  EXPECT_EQ(screen->albumsCollectionView->gestureRecognizers().size(), 0u);
}

TEST_F(AudioVCTest, AnAlbumCountsItsCloudSongsAndOnlySongsOnTheDevicePlay) {
  auto screen = open();
  ASSERT_TRUE(screen);
  auto sea = cell(*screen, 0);
  EXPECT_EQ(*sea->lblAlbumName->text() + " " + *sea->lblNoOfItems->text(), "Sea 3 Songs");
  EXPECT_TRUE(sea->albumImg->image()->isPixels());
  EXPECT_FALSE(screen->btnMrnu->isHidden());
  tapRow(*screen, 0);
  ASSERT_EQ(screen->songList.size(), 3u);
  EXPECT_EQ(screen->photoViewModel->items[0]->item.duration, 61);
  screen->performAction("onGridOrListBtn:", nullptr);
  EXPECT_EQ(*cell(*screen, 0)->lblNoOfItems->text(), "4.58 MB");

  tapRow(*screen, 2);  // only in the cloud
  EXPECT_FALSE(nav()->presentedViewController());
  EXPECT_TRUE(AppData::shared()->recentFiles.empty());
  tapRow(*screen, 0);
  auto player = std::dynamic_pointer_cast<MusicPlayerVC>(nav()->presentedViewController());
  ASSERT_TRUE(player);
  EXPECT_EQ(player->song->persistentID(), 11u);
  EXPECT_EQ(AppData::shared()->recentFiles.size(), 1u);
}

TEST_F(AudioVCTest, SharingTwoSongsOfOneNameOffersOnePathTwiceBeforeTheExportsRun) {
  auto screen = open();
  tapRow(*screen, 0);
  select(*screen, {0, 1, 2});
  screen->performAction("onShareBtn:", screen->outlet("btnShare"));
  loop().runMainUntilIdle();
  auto sheet = std::dynamic_pointer_cast<UIActivityViewController>(nav()->presentedViewController());
  ASSERT_TRUE(sheet);
  std::string documents = NSSearchPathForDirectoriesInDomains(NSDocumentDirectory, NSUserDomainMask, true).front();
  std::string blue = URL::fileURLWithPath(documents + "/Blue.caf", false).absoluteString();
  EXPECT_EQ(sheet->itemDescriptions(), (std::vector<std::string>{blue, blue})) << "the cloud song is skipped";
  EXPECT_FALSE(std::filesystem::exists(documents + "/Blue.caf")) << "the sheet is up before any export ran";
  EXPECT_FALSE(screen->isSelectionModeOn());
  settle();
  EXPECT_TRUE(std::filesystem::exists(documents + "/Blue.caf")) << "one export wins, the other finds it there";
  advance(1);
  EXPECT_FALSE(SVProgressHUD::state().visible);
}

TEST_F(AudioVCTest, FavouritesSkipCloudSongsAndInfoDescribesOneOrSeveral) {
  auto screen = open();
  tapRow(*screen, 0);
  select(*screen, {1, 2});
  press(*screen, "onFavBtn:");
  ASSERT_EQ(AppData::shared()->FavouriteFiles.size(), 1u);
  EXPECT_EQ(AppData::shared()->FavouriteFiles[0].url.absoluteString(), "ipod-library://item/item.mp3?id=12");
  EXPECT_FALSE(screen->isSelectionModeOn());

  select(*screen, {0});
  press(*screen, "onInfoBtn:");
  auto one = std::dynamic_pointer_cast<InfoViewController>(nav()->presentedViewController());
  ASSERT_TRUE(one);
  EXPECT_EQ(one->model.name, "Blue");
  EXPECT_TRUE(screen->isSelectionModeOn()) << "selection stays on under a panel";
  nav()->dismissViewControllerAnimated(false, nullptr);
  settle();
  tapRow(*screen, 1);
  press(*screen, "onInfoBtn:");
  auto several = std::dynamic_pointer_cast<PhotosInfoVC>(nav()->presentedViewController());
  ASSERT_TRUE(several);
  EXPECT_EQ(several->models.size(), 2u);
}

TEST_F(AudioVCTest, BackToTheAlbumsKeepsTheLoadedListAndEndsSelection) {
  auto screen = open();
  auto albums = screen->viewModel;
  tapRow(*screen, 1);
  select(*screen, {0});
  press(*screen, "onMainFolderBtn:");
  EXPECT_TRUE(screen->isAlBumsDisplay);
  EXPECT_EQ(screen->viewModel, albums) << "not read again";
  EXPECT_TRUE(screen->tap->isEnabled());
  EXPECT_TRUE(screen->SelectEditView->isHidden());
  EXPECT_TRUE(screen->photoViewModel->isMultipleSelectionEnabled) << "the song list keeps its flags";
  EXPECT_DEATH(screen->performAction("onDeleteBtn:", nullptr), "Index out of range");
}

TEST_F(AudioVCTest, ALengthBeyondAnIntegerEndsTheSongLoad) {
  auto screen = open(R"({"music": {"songs": [{"persistentID": "1", "albumTitle": "A", "duration": 1e300}]}})");
  ASSERT_TRUE(screen);
  EXPECT_DEATH(tapRow(*screen, 0), "outside the representable range");
}

}  // namespace
}  // namespace nimbrel
