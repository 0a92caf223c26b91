#include "app/core/BasicMethod.h"

#include <gtest/gtest.h>

#include "app/core/AppData.h"
#include "app/SimTest.h"
#include "platform/libs/SVProgressHUD.h"

namespace nimbrel {
namespace {

class BasicMethodTest : public testing::SimTest {
 protected:
  void SetUp() override { start(); }

  URL url(const std::string& s) { return *URL::withString(s); }
  std::vector<std::string> addresses(const std::vector<File>& files) {
    std::vector<std::string> out;
    for (const auto& f : files) out.push_back(f.url.absoluteString());
    return out;
  }
  int saves() { return platform->preferencesStore().saveCount(); }
};

TEST_F(BasicMethodTest, AFreshInstallHasNoListWhichDiffersFromAnEmptyOne) {
  EXPECT_FALSE(loadRecentFiles());
  EXPECT_FALSE(loadFavouriteFiles());
  AppData::shared()->recentFiles.push_back(File{url("file:///kept"), Date{1}, FileType::docs});
  refreshRecentFiles();
  EXPECT_EQ(AppData::shared()->recentFiles.size(), 1u) << "nothing stored leaves the memory list alone";
  saveRecentFiles({});
  auto read = loadRecentFiles();
  ASSERT_TRUE(read);
  EXPECT_TRUE(read->empty());
  EXPECT_TRUE(defaults().dataForKey("recentFiles")) << "an emptied list keeps its key";
  refreshRecentFiles();
  EXPECT_TRUE(AppData::shared()->recentFiles.empty()) << "an empty stored list is read as empty";
  defaults().setObject(PlistValue("a string"), "favFiles");
  EXPECT_FALSE(loadFavouriteFiles()) << "a value that is no data counts as nothing stored";
}

TEST_F(BasicMethodTest, OpeningTheSameItemThreeTimesStoresThreeAndTheFoldKeepsTheNewest) {
  loop().advance(10);
  addRecentFile(url("file:///doc.pdf"), FileType::docs);
  loop().advance(10);
  addRecentFile(url("file:///doc.pdf"), FileType::docs);
  loop().advance(10);
  addRecentFile(url("file:///doc.pdf"), FileType::docs);
  double newest = AppData::shared()->recentFiles.front().openingDate.timeIntervalSinceReferenceDate;
  ASSERT_EQ(loadRecentFiles()->size(), 3u);

  refreshRecentFiles();
  auto& recents = AppData::shared()->recentFiles;
  ASSERT_EQ(recents.size(), 1u);
  EXPECT_EQ(recents[0].openingDate.timeIntervalSinceReferenceDate, newest);
  EXPECT_EQ(loadRecentFiles()->size(), 3u) << "the fold does not write back";

  addRecentFile(url("file:///other.txt"), FileType::docs);
  EXPECT_EQ(addresses(*loadRecentFiles()),
            (std::vector<std::string>{"file:///other.txt", "file:///doc.pdf"}))
      << "the next write stores the folded list plus the new record";
}

TEST_F(BasicMethodTest, FavouritesFoldToTheOldestAndAddressesDifferingByQueryStayApart) {
  addFavouriteFiles({"assets-library://asset/asset.JPG?id=A&extJPG"}, FileType::photo);
  loop().advance(5);
  addFavouriteFiles({"assets-library://asset/asset.JPG?id=A&extJPG",
                     "assets-library://asset/asset.JPG?id=A&extMOV"},
                    FileType::photo);
  auto& favourites = AppData::shared()->FavouriteFiles;
  ASSERT_EQ(favourites.size(), 3u) << "no duplicate test when adding";
  ASSERT_EQ(loadFavouriteFiles()->size(), 3u);
  double oldest = favourites[0].openingDate.timeIntervalSinceReferenceDate;

  refreshFavouriteFiles();
  ASSERT_EQ(favourites.size(), 2u);
  EXPECT_EQ(favourites[0].openingDate.timeIntervalSinceReferenceDate, oldest);
  EXPECT_EQ(favourites[1].url.absoluteString(), "assets-library://asset/asset.JPG?id=A&extMOV");
}

TEST_F(BasicMethodTest, AddingFavouritesSkipsNonUrlsSpeaksOnceAndWritesThroughAtOnce) {
  int before = saves();
  addFavouriteFiles(std::vector<std::string>{}, FileType::docs);
  settle();
  EXPECT_EQ(saves(), before) << "adding none writes and says nothing";
  EXPECT_FALSE(SVProgressHUD::state().visible);
  EXPECT_FALSE(loadFavouriteFiles());
  addFavouriteFiles({"file:///a.pdf", "not a url", "file:///b.pdf"}, FileType::docs);
  EXPECT_EQ(saves(), before + 1) << "synchronised without waiting for the debounce";
  EXPECT_EQ(platform->preferencesStore().stored().size(), 1u);
  settle();
  EXPECT_EQ(addresses(AppData::shared()->FavouriteFiles),
            (std::vector<std::string>{"file:///a.pdf", "file:///b.pdf"}));
  auto hud = SVProgressHUD::state();
  EXPECT_EQ(hud.kind, SVProgressHUD::Kind::success);
  EXPECT_EQ(hud.status, "Mark as Favourite....");
  EXPECT_EQ(addresses(*loadFavouriteFiles()), addresses(AppData::shared()->FavouriteFiles));
}

TEST_F(BasicMethodTest, ExclusionComparesWholeAddresses) {
  std::vector<File> files{{url("file:///a"), Date{1}, FileType::docs},
                          {url("file:///b"), Date{2}, FileType::docs},
                          {url("file:///a"), Date{3}, FileType::docs}};
  EXPECT_EQ(addresses(filesExcluding(files, {url("file:///a")})), (std::vector<std::string>{"file:///b"}));
  EXPECT_EQ(filesExcluding(files, {}).size(), 3u);
}

// Large lists' round trip is BinaryPropertyListTest's (10,000 records).
// Stored bytes that do not decode end the process at their line: recentFiles in the e2e
// damaged_list_ends_launch scenario, favFiles in LaunchDeathTest.

}  // namespace
}  // namespace nimbrel
