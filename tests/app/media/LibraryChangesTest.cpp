#include <gtest/gtest.h>

#include "app/SimTest.h"
#include "app/core/AppData.h"
#include "app/core/BasicMethod.h"
#include "app/media/PhotoLibraryAccess.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/libs/SVProgressHUD.h"
#include "platform/photos/PHPhotoLibrary.h"
#include "ObservedPhotoLibrary.h"

namespace nimbrel {
namespace {

constexpr const char* kAssets = R"(
  "assets": [
    {"id": "I1/L0/001"}, {"id": "I2/L0/001"}, {"id": "V1/L0/001", "mediaType": 2}
  ],
  "albums": [
    {"id": "LIB/L0/040", "title": "Recents", "type": 2, "subtype": 209,
     "assets": ["I1/L0/001", "I2/L0/001", "V1/L0/001"]},
    {"id": "TRIP/L0/040", "title": "Trip", "type": 1, "subtype": 2, "assets": ["I1/L0/001"]},
    {"id": "HOME/L0/040", "title": "Home", "type": 1, "subtype": 2, "assets": ["I2/L0/001"]},
    {"id": "TRIP2/L0/040", "title": "Trip", "type": 1, "subtype": 2, "assets": []},
    {"id": "SMART/L0/040", "title": "Trip", "type": 2, "subtype": 203, "assets": ["I2/L0/001"]}
  ])";

class LibraryChangesTest : public testing::SimTest {
 protected:
  void startLibrary(bool confirmDeletes = true) {
    start(std::string(R"({"photos": {"confirmDeletes": )") + (confirmDeletes ? "true" : "false") + "," + kAssets +
          "}}");
    // I1 twice among the favourites; a recent record of I1 that a delete must leave alone.
    auto data = AppData::shared();
    data->FavouriteFiles = {file(i1), file("file:///doc.pdf"), file(v1), file(i1), file(i2)};
    data->recentFiles = {file(i1)};
    saveFavouriteFiles(data->FavouriteFiles);
    saveRecentFiles(data->recentFiles);
    takeLog();
  }

  File file(const std::string& address) { return File{*URL::withString(address), Date{1}, FileType::photo}; }
  static std::vector<std::string> addresses(const std::vector<File>& files) {
    std::vector<std::string> out;
    for (const auto& f : files) out.push_back(f.url.absoluteString());
    return out;
  }
  static std::vector<std::string> userAlbumIds() {
    return ids(PHAssetCollection::fetchAssetCollectionsWithType(PHAssetCollectionType::album, PHAssetCollectionSubtypeAny,
                                                                nullptr));
  }
  void deleteI1AndV1() {
    deleteAssets(
        assets({"I1/L0/001", "V1/L0/001"}), {*URL::withString(i1), *URL::withString(v1)},
        [this] {
          EXPECT_TRUE(loop().isMainThread());
          ++leaves;
        },
        [this] {
          EXPECT_TRUE(loop().isMainThread());
          ++reloads;
          favouritesSeenByReload = addresses(AppData::shared()->FavouriteFiles);
          storedSeenByReload = addresses(loadFavouriteFiles().value_or(std::vector<File>{}));
        });
  }
  int saves() { return platform->preferencesStore().saveCount(); }

  const std::string i1 = "assets-library://asset/asset.JPG?id=I1&extJPG";
  const std::string i2 = "assets-library://asset/asset.JPG?id=I2&extJPG";
  const std::string v1 = "assets-library://asset/asset.MOV?id=V1&extMOV";
  int leaves = 0, reloads = 0;
  std::vector<std::string> favouritesSeenByReload, storedSeenByReload;
};

// The library's delete and the recents kept in memory are the e2e images_viewer_favourite_share_delete
// scenario's.
TEST_F(LibraryChangesTest, ADoneDeleteForgetsTheFavouritesThenReloads) {
  startLibrary();
  deleteI1AndV1();
  // The library confirms and answers on the background queue; the favourites wait for main.
  while (loop().pendingBackgroundCount() > 0) loop().runBackgroundTask(0);
  EXPECT_EQ(AppData::shared()->FavouriteFiles.size(), 5u);
  EXPECT_EQ(reloads, 0);
  EXPECT_TRUE(logged("removed"));
  settle();

  const std::vector<std::string> kept{"file:///doc.pdf", i2};
  EXPECT_EQ(addresses(AppData::shared()->FavouriteFiles), kept);
  EXPECT_EQ(reloads, 1);
  EXPECT_EQ(favouritesSeenByReload, kept) << "forgotten before the reload";
  EXPECT_EQ(storedSeenByReload, kept) << "saved before the reload";
  EXPECT_EQ(addresses(*loadRecentFiles()), (std::vector<std::string>{i1})) << "recents untouched";
  EXPECT_EQ(leaves, 0);
  EXPECT_FALSE(SVProgressHUD::state().visible) << "no message for a done delete";
}

TEST_F(LibraryChangesTest, ARefusedDeleteSaysSoAndKeepsTheFavourites) {
  startLibrary(false);
  int savesBefore = saves();
  deleteI1AndV1();
  settle();

  auto hud = SVProgressHUD::state();
  EXPECT_EQ(hud.kind, SVProgressHUD::Kind::info);
  EXPECT_EQ(hud.status, "Something Wrong.Not Deleted");
  EXPECT_EQ(leaves, 1);
  EXPECT_EQ(reloads, 0);
  EXPECT_EQ(AppData::shared()->FavouriteFiles.size(), 5u);
  EXPECT_EQ(saves(), savesBefore);
  EXPECT_EQ(PHAsset::fetchAssetsWithOptions(nullptr).count(), 3u);
  auto log = takeLog();
  ASSERT_EQ(log.size(), 2u);
  EXPECT_EQ(log[0], "not removed..");
  EXPECT_NE(log[1].find("Code=3072"), std::string::npos) << log[1];
}

TEST_F(LibraryChangesTest, DeletingAnAlbumByTitleTakesEveryUserAlbumOfThatTitle) {
  startLibrary();
  int done = 0;
  deleteAlbumByTitle("Trip", [&] {
    EXPECT_TRUE(loop().isMainThread());
    ++done;
  });
  settle();
  EXPECT_EQ(done, 1);
  EXPECT_EQ(userAlbumIds(), (std::vector<std::string>{"HOME/L0/040"}));
  EXPECT_EQ(PHAssetCollection::fetchAssetCollectionsWithLocalIdentifiers({"SMART/L0/040"}, nullptr).count(), 1u)
      << "a smart album of that title stays";
  EXPECT_EQ(PHAsset::fetchAssetsWithOptions(nullptr).count(), 3u) << "the items stay in the library";
  EXPECT_TRUE(logged(" Trip removed succesfully"));

  auto hud = SVProgressHUD::state();
  EXPECT_EQ(hud.kind, SVProgressHUD::Kind::success);
  EXPECT_EQ(hud.status, "Deleted Successfully From album.");
  // The dismissal asked for before the success status takes it away after 0.3 s and a fade.
  advance(0.3);
  EXPECT_TRUE(SVProgressHUD::state().fadingOut);
  advance(0.15);
  EXPECT_FALSE(SVProgressHUD::state().visible);
}

// A title that is not found is said without a change; a refused delete says the same.
TEST_F(LibraryChangesTest, AnAlbumTitleNotFoundAndARefusedAlbumDeleteSayTheTitleWasNotFound) {
  const std::tuple<const char*, bool, const char*> rows[] = {
      {"Nowhere", true, "requested album Nowhere not found in photos"}, {"Trip", false, "request failed. please try again"}};
  for (auto [title, confirms, line] : rows) {
    SCOPED_TRACE(title);
    startLibrary(confirms);
    bool done = false;
    deleteAlbumByTitle(title, [&] { done = true; });
    EXPECT_EQ(logged(line), confirms) << "said at once only when not found";
    settle();
    EXPECT_TRUE(logged(line));
    auto hud = SVProgressHUD::state();
    EXPECT_EQ(hud.kind, SVProgressHUD::Kind::info);
    EXPECT_EQ(hud.status, "requested album " + std::string(title) + " not found in photos");
    EXPECT_FALSE(done);
    EXPECT_EQ(userAlbumIds().size(), 3u);
    EXPECT_EQ(calls("photos.performChanges"), confirms ? 0u : 1u);
    platform.reset();
  }
}

TEST_F(LibraryChangesTest, AnAlbumDeleteFailingWithoutAnErrorIsSilent) {
  startLibrary();
  auto observed = testing::ObservedPhotoLibrary::install();
  observed->changesAnswer = [](PhotoLibrarySource::Changes&, auto& answer) {
    DispatchQueue::global().async([answer] { answer(false, std::nullopt); });
    return true;
  };
  bool done = false;
  deleteAlbumByTitle("Trip", [&] { done = true; });
  settle();
  EXPECT_FALSE(SVProgressHUD::state().visible);
  EXPECT_TRUE(takeLog().empty());
  EXPECT_FALSE(done);
}

}  // namespace
}  // namespace nimbrel
