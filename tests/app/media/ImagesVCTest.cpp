#include "app/media/ImagesVC.h"

#include <gtest/gtest.h>

#include "app/ads/AppLovinNativeAdManual.h"
#include "app/core/AppData.h"
#include "app/core/ApplicationMain.h"
#include "app/core/BasicMethod.h"
#include "app/SimTest.h"
#include "app/VC/PopupMenu.h"
#include "app/VC/UIViewControllerExtension.h"
#include "app/media/PhotoLibraryAccess.h"
#include "platform/libs/SVProgressHUD.h"
#include "platform/uikit/UIActivityViewController.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UINavigationController.h"
#include "app/viewers/InfoViewController.h"
#include "app/viewers/PhotosInfoVC.h"
#include "app/viewers/PreviewViewController.h"
#include "platform/av/AVPlayer.h"
#include "platform/av/AVPlayerViewController.h"
#include "platform/foundation/NSPathUtilities.h"
#include <filesystem>

namespace nimbrel {
namespace {

// A library with one album of each source, newest asset last in the fixture.
std::string library(int imagesInTrip = 3, const std::string& extra = "", const std::string& photosExtra = "") {
  std::string assets, trip;
  for (int i = 0; i < imagesInTrip; ++i) {
    std::string id = "T" + std::to_string(i) + "/L0/001";
    std::string day = (i + 1 < 10 ? "0" : "") + std::to_string(i + 1);
    assets += R"({"id": ")" + id + R"(", "created": "2026-03-)" + day + R"(T10:00:00Z", "fileSize": )" + std::to_string(1000000 * (i + 1)) + "},";
    trip += (trip.empty() ? "\"" : ",\"") + id + "\"";
  }
  return R"({"now": "2026-11-22T10:00:00Z", )" + extra + R"("photos": {)" + photosExtra + R"("assets": [)" + assets + R"(
      {"id": "V1/L0/001", "mediaType": 2, "duration": 10, "created": "2026-04-01T10:00:00Z"},
      {"id": "S1/L0/001", "created": "2026-01-01T10:00:00Z", "filename": "selfie.HEIC"}],
    "albums": [
      {"id": "LIB", "title": "Recents", "type": 2, "subtype": 209, "assets": [)" + trip + R"(, "V1/L0/001", "S1/L0/001"]},
      {"id": "FAV", "title": "Favorites", "type": 2, "subtype": 203, "assets": []},
      {"id": "TRIP", "title": "Trip", "type": 1, "subtype": 2, "assets": [)" + trip + R"(]},
      {"id": "SELF", "title": "Selfies", "type": 2, "subtype": 210, "assets": ["S1/L0/001"]},
      {"id": "VIDS", "title": "Videos", "type": 2, "subtype": 202, "assets": ["V1/L0/001"]}]}})";
}

class ImagesVCTest : public testing::SimTest {
 protected:
  // Launches, lets the splash hand over, and opens the images screen for `type`.
  std::shared_ptr<ImagesVC> open(const std::string& fixture, MediaTypes type = MediaTypes::image,
                                 bool pumpLoad = true) {
    launchToHome(fixture);
    auto screen = instantiate<ImagesVC>(AppStoryboard::Main);
    screen->mediatype = type;
    screen->albums = albumsForMediaType(type);
    nav()->pushViewController(screen, true);
    if (pumpLoad) settle();
    return screen;
  }
  // The second album (Trip, or Videos for videos) open and, with `select`, its first item picked.
  std::shared_ptr<ImagesVC> openAlbum(const std::string& fixture, MediaTypes type = MediaTypes::image, bool select = false) {
    auto screen = open(fixture, type);
    tapRow(*screen, 1);
    if (select) longPressRow(*screen, 0);
    return screen;
  }
  std::vector<std::string> albumNames(const ImagesVC& screen) {
    std::vector<std::string> out;
    for (const auto& item : screen.viewModel->items) out.push_back(item->item.name);
    return out;
  }
  bool chromeShown(ImagesVC& screen) {
    return !screen.closeBtnView->isHidden() && !screen.selectALLBtn->isHidden() &&
           !screen.headerSelectionView->isHidden();
  }
};

TEST_F(ImagesVCTest, AlbumsComeInSourceOrderAndOnlyWithItemsOfTheMediaType) {
  auto images = open(library());
  EXPECT_EQ(albumNames(*images), (std::vector<std::string>{"Recents", "Trip", "Selfies"}));
  EXPECT_EQ(images->viewModel->items[0]->item.count, 4) << "the library's images, not its video";
  EXPECT_EQ(images->viewModel->items[0]->item.albumAsset->localIdentifier(), "T2/L0/001") << "the newest image";
  // A fresh list stands all selected in the collection while the rows themselves keep false.
  EXPECT_EQ(images->albumsCollectionView->indexPathsForSelectedItems().size(), 3u);
  for (const auto& item : images->viewModel->items) EXPECT_FALSE(item->isSelected);
  EXPECT_TRUE(images->SelectEditView->isHidden());
  platform.reset();
  auto videos = open(library(), MediaTypes::video);
  EXPECT_EQ(albumNames(*videos), (std::vector<std::string>{"Recents", "Videos"}));
  EXPECT_EQ(videos->lblMainFolderName->text(), "Videos");
  EXPECT_EQ(videos->lblAboveTitle->text(), "Videos");
}

TEST_F(ImagesVCTest, TheListClosesAtTheLastAlbumsCompletionWhateverTheOrder) {
  auto screen = open(library(), MediaTypes::image, false);
  loop().runMainUntilIdle();
  ASSERT_EQ(loop().pendingBackgroundCount(), 1u) << "the access answer comes on a background queue";
  loop().runBackgroundTask(0);
  loop().runMainUntilIdle();
  ASSERT_EQ(screen->albums.size(), 3u);
  ASSERT_EQ(loop().pendingBackgroundCount(), 3u);
  // Selfies (the last index) completes before Trip: the list closes without Trip.
  loop().runBackgroundTask(0);  // Recents
  loop().runBackgroundTask(1);  // Selfies
  loop().runMainUntilIdle();
  EXPECT_EQ(albumNames(*screen), (std::vector<std::string>{"Recents", "Selfies"}));
  loop().runBackgroundTask(0);  // Trip, too late to be listed
  settle();
  EXPECT_EQ(albumNames(*screen), (std::vector<std::string>{"Recents", "Selfies"}));
  EXPECT_EQ(screen->albumModelsArr.size(), 3u) << "the late album is gathered all the same";
}

// The alert at a refusal is the e2e protocol_errors scenario's; which answers explain is PhotoAccessTest's.
TEST_F(ImagesVCTest, RefusedOrLimitedAccessListsNothing) {
  auto refused = open(library(3, R"("permissions": {"photos": 2}, )"));
  EXPECT_TRUE(refused->viewModel->items.empty());
  platform.reset();
  auto limited = open(library(3, R"("permissions": {"photos": 4}, )"));
  EXPECT_FALSE(nav()->presentedViewController());
  EXPECT_TRUE(limited->viewModel->items.empty());
}

// The path bar's album name, the items newest first and the way back to the albums are read by the
// e2e images_album_level_and_selection scenario.
TEST_F(ImagesVCTest, TheLayoutButtonSwitchesToListCellsAndStoresTheChoiceWithoutASynchronize) {
  auto screen = openAlbum(library(3, R"("preferences": {"isFirstTime": true, "kIsListView": false}, )"));
  EXPECT_FALSE(screen->isAlBumsDisplay);
  EXPECT_EQ(screen->currentSelectedAlbumIndex, 1);
  EXPECT_FALSE(screen->lastsubImagesAerrowView->isHidden());
  EXPECT_EQ(screen->lblMainFolderName->textColor(), UIColor::darkTextColor());
  press(*screen, "onGridOrListBtn:");
  auto& cv = *screen->albumsCollectionView;
  cv.layoutSubviews();
  auto list = std::dynamic_pointer_cast<albumsCollectionViewCell>(cv.cellForItemAtIndexPath({0, 0}));
  ASSERT_TRUE(list);
  EXPECT_EQ(list->reuseIdentifier(), "photosListCell");
  EXPECT_EQ(list->lblNoOfItems->text(), "3 Mar 2026 10:00    2.86 MB");
  EXPECT_EQ(screen->imgGridOrList->image()->name(), "grid");
  EXPECT_TRUE(defaults().boolForKey("kIsListView"));
  EXPECT_TRUE(defaults().hasPendingChanges());
}

// A long press at the album level and on an item are read by the e2e
// images_album_level_and_selection scenario.
TEST_F(ImagesVCTest, ALongPressOnTheGapOrInSelectionModeDoesNothing) {
  auto screen = openAlbum(library());
  screen->longPress->recognize(UIGestureRecognizerState::began, {1, 100000});  // the gap
  settle();
  EXPECT_FALSE(screen->isSelectionModeOn());
  longPressRow(*screen, 1);
  longPressRow(*screen, 2);
  EXPECT_EQ(screen->photoViewModel->selectedItems().size(), 1u) << "a long press in selection mode does nothing";
}

TEST_F(ImagesVCTest, EditIsOnTheItemMenuOnlyAndWithNothingPickedShowsTheChromeButNotTheEditBar) {
  auto screen = open(library());
  press(*screen, "onMenuBtn:", "btnMrnu");
  EXPECT_EQ(popupMenuEntries(), (std::vector<std::string>{"Storage analysis", "Settings"}));
  dismissPopupMenu();
  tapRow(*screen, 1);
  press(*screen, "onMenuBtn:", "btnMrnu");
  EXPECT_EQ(popupMenuEntries(), (std::vector<std::string>{"Edit", "Storage analysis", "Settings"}));
  pressPopupMenuEntry(0);
  settle();
  EXPECT_TRUE(chromeShown(*screen));
  EXPECT_TRUE(screen->SelectEditView->isHidden());
  EXPECT_TRUE(screen->photoViewModel->selectedItems().empty());
  tapRow(*screen, 2);
  EXPECT_FALSE(screen->SelectEditView->isHidden()) << "the first pick shows the edit bar";
}

// Picking the last one by taps says "Deselect All" (the e2e scenario); the select-all button's own
// table is BrowseScreenTest's.
TEST_F(ImagesVCTest, UnpickingOneOfAllSaysSelectAllAgainAndUnpickingTheLastEndsSelectionMode) {
  auto screen = openAlbum(library(), MediaTypes::image, true);
  tapRow(*screen, 1);
  tapRow(*screen, 2);
  ASSERT_EQ(screen->selectALLBtn->currentTitle(), "Deselect All");
  tapRow(*screen, 2);
  EXPECT_EQ(screen->selectALLBtn->currentTitle(), "Select All");
  EXPECT_FALSE(screen->selectAllCehckmark->isSelected());
  tapRow(*screen, 1);
  tapRow(*screen, 0);  // the collection's own deselect, the tap being gone
  EXPECT_FALSE(screen->isSelectionModeOn());
  EXPECT_TRUE(screen->SelectEditView->isHidden());
  EXPECT_FALSE(chromeShown(*screen));
  EXPECT_EQ(screen->albumsCollectionView->tag(), 0);
  EXPECT_TRUE(screen->tap->view() && screen->tap->isEnabled());
  for (const auto& item : screen->photoViewModel->items) EXPECT_TRUE(item->isSelected);
}

TEST_F(ImagesVCTest, SwitchingLayoutDuringSelectionKeepsSelectionMode) {
  auto screen = openAlbum(library(), MediaTypes::image, true);
  press(*screen, "onGridOrListBtn:");
  EXPECT_TRUE(screen->isSelectionModeOn());
  EXPECT_EQ(screen->albumsCollectionView->tag(), 1);
  screen->albumsCollectionView->layoutSubviews();
  auto cell = std::dynamic_pointer_cast<albumsCollectionViewCell>(screen->albumsCollectionView->cellForItemAtIndexPath({0, 0}));
  ASSERT_TRUE(cell);
  EXPECT_FALSE(cell->checkmarkView->isHidden()) << "checkmarks show in the new layout";
}

TEST_F(ImagesVCTest, ShareTakesTenImagesButNotEleven) {
  auto screen = openAlbum(library(11), MediaTypes::image, true);
  for (long row = 1; row < 11; ++row) tapRow(*screen, row);
  ASSERT_EQ(screen->photoViewModel->selectedItems().size(), 11u);
  press(*screen, "onShareBtn:", "btnShare");
  EXPECT_EQ(SVProgressHUD::state().status, "Maxium 10 Items Shared...");
  EXPECT_EQ(screen->photoViewModel->selectedItems().size(), 11u) << "the selection stays";
  EXPECT_FALSE(nav()->presentedViewController());
  tapRow(*screen, 10);
  press(*screen, "onShareBtn:", "btnShare");
  auto sheet = std::dynamic_pointer_cast<UIActivityViewController>(nav()->presentedViewController());
  ASSERT_TRUE(sheet);
  EXPECT_EQ(sheet->activityItems().size(), 10u);
  EXPECT_FALSE(screen->isSelectionModeOn()) << "selection mode ends while the sheet is up";
  EXPECT_FALSE(sheet->popoverPresentationController()) << "no popover on a phone";
}

// What a refused delete says and keeps is LibraryChangesTest's; the screen stays at the items.
TEST_F(ImagesVCTest, ARefusedDeleteStaysAtTheItems) {
  auto screen = openAlbum(library(3, "", R"("confirmDeletes": false, )"), MediaTypes::image, true);
  press(*screen, "onDeletBtn:", "btnDelete");
  EXPECT_FALSE(screen->isAlBumsDisplay);
  EXPECT_EQ(screen->photoViewModel->items.size(), 3u);
}

// A photo's favourite, its message and the button's icon are the e2e album-level scenario's.
TEST_F(ImagesVCTest, AVideoIsRememberedAsAPhotoPlaysInTheSystemPlayerAndIsAFavouriteAsAVideo) {
  auto screen = openAlbum(library(), MediaTypes::video, true);
  press(*screen, "onFavBtn:", "btnFav");
  ASSERT_EQ(AppData::shared()->FavouriteFiles.size(), 1u);
  EXPECT_EQ(AppData::shared()->FavouriteFiles[0].url.absoluteString(), "assets-library://asset/asset.MOV?id=V1&extMOV");
  EXPECT_EQ(AppData::shared()->FavouriteFiles[0].filetype, FileType::video);
  tapRow(*screen, 0);
  tapRow(*screen, 0);
  ASSERT_EQ(AppData::shared()->recentFiles.size(), 2u) << "two taps, two records";
  for (const auto& record : AppData::shared()->recentFiles) {
    EXPECT_EQ(record.url.absoluteString(), "assets-library://asset/asset.MOV?id=V1&extMOV");
    EXPECT_EQ(record.filetype, FileType::photo);
  }
  auto player = std::dynamic_pointer_cast<AVPlayerViewController>(nav()->presentedViewController());
  ASSERT_TRUE(player);
  ASSERT_TRUE(player->player);
  EXPECT_TRUE(player->player->isPlaying()) << "play once presented";
}

TEST_F(ImagesVCTest, SharingTheSameVideoTwiceSharesTheEarlierCopy) {
  auto screen = openAlbum(library(), MediaTypes::video);
  auto share = [&] {
    longPressRow(*screen, 0);
    press(*screen, "onShareBtn:", "btnShare");
    advance(0.5);
    auto sheet = std::dynamic_pointer_cast<UIActivityViewController>(nav()->presentedViewController());
    EXPECT_TRUE(sheet);
    auto items = sheet ? sheet->itemDescriptions() : std::vector<std::string>{};
    if (sheet) sheet->close(false);
    settle();
    return items;
  };
  std::string copy = NSHomeDirectory() + "/Documents/IMG_0004.MOV.mp4";
  auto first = share();
  ASSERT_EQ(first.size(), 1u);
  EXPECT_EQ(URL::withString(first[0])->path(), copy);
  EXPECT_TRUE(std::filesystem::exists(copy));
  EXPECT_TRUE(SVProgressHUD::state().visible) << "a video share leaves the overlay standing";
  auto second = share();
  EXPECT_EQ(second, first) << "the second copy fails and the earlier file is shared";
}

TEST_F(ImagesVCTest, InfoOpensOnePanelForOneItemAndTheOtherForSeveral) {
  auto screen = openAlbum(library(), MediaTypes::image, true);
  press(*screen, "onInfoBtn:", "btnInfo");
  auto one = std::dynamic_pointer_cast<InfoViewController>(nav()->presentedViewController());
  ASSERT_TRUE(one);
  EXPECT_EQ(one->modalPresentationStyle(), UIModalPresentationStyle::overCurrentContext);
  EXPECT_TRUE(screen->isSelectionModeOn()) << "selection mode stays";
  press(*one, "onExitBtn:");
  tapRow(*screen, 1);
  press(*screen, "onInfoBtn:", "btnInfo");
  auto several = std::dynamic_pointer_cast<PhotosInfoVC>(nav()->presentedViewController());
  ASSERT_TRUE(several);
  EXPECT_EQ(several->models.size(), 2u);
}

}  // namespace
}  // namespace nimbrel
