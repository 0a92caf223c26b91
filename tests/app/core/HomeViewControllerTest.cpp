#include "app/core/HomeViewController.h"

#include <gtest/gtest.h>

#include "app/core/ApplicationMain.h"
#include "app/core/BasicMethod.h"
#include "app/core/RecentFilesCollectionViewCell.h"
#include "app/SimTest.h"
#include "app/VC/PopupMenu.h"
#include "app/media/Fetch.h"
#include "app/media/ImagesVC.h"
#include "platform/ads/MANativeAdView.h"
#include "platform/libs/SVProgressHUD.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UINavigationController.h"

namespace nimbrel {
namespace {

// One stored recent record as the fixture writes it.
std::string recent(const std::string& url, const std::string& filetype, int openedAt = 100) {
  return R"({"url": ")" + url + R"(", "openingDate": )" + std::to_string(openedAt) + R"(, "filetype": ")" + filetype +
         "\"}";
}

std::string docs(int n) {
  std::string out;
  for (int i = 0; i < n; ++i) out += (i ? "," : "") + recent("file:///d" + std::to_string(i) + ".pdf", "docs", 100 - i);
  return out;
}

// What a person sees of one strip cell.
struct CellLook {
  std::string image;
  std::optional<std::string> name;
  bool nameHidden = false;
  bool moreShown = false;
  double cornerRadius = 0;
  std::optional<UIColor> background;
};

class HomeViewControllerTest : public testing::SimTest {
 protected:
  // Launches on the fixture and waits until the splash has handed over to the home screen.
  std::shared_ptr<HomeViewController> launchHome(const std::string& fixture = "{}") {
    launchToHome(fixture);
    auto home = std::dynamic_pointer_cast<HomeViewController>(nav()->topViewController());
    EXPECT_TRUE(home);
    return home;
  }
  std::string withRecents(const std::string& records, const std::string& extra = "") {
    return R"({"now": "2026-11-22T10:00:00Z", )" + extra + R"("preferences": {"recentFiles": [)" + records + "]}}";
  }
  std::vector<std::string> stack() {
    std::vector<std::string> out;
    for (const auto& vc : nav()->viewControllers()) out.push_back(vc->className());
    return out;
  }
  // Another screen is pushed over the home screen and popped again.
  void comeBack() {
    nav()->pushViewController(std::make_shared<UIViewController>(), false);
    settle();
    nav()->popViewControllerAnimated(false);
    settle();
  }
  CellLook cellAt(HomeViewController& home, long row) {
    CellLook look;
    home.recentFileCollectionView->withCellForRow({0, row}, [&](UICollectionViewCell& c) {
      auto& cell = dynamic_cast<RecentFilesCollectionViewCell&>(c);
      look.image = cell.fileImg->image() ? cell.fileImg->image()->describe() : "none";
      look.name = cell.fileName->text();
      look.nameHidden = cell.fileName->isHidden();
      look.moreShown = !cell.moreFilesView->isHidden();
      look.cornerRadius = cell.fileImg->layer().cornerRadius;
      look.background = cell.backgroundColor();
    });
    return look;
  }
  std::vector<long> rowsWithMoreMark(HomeViewController& home) {
    std::vector<long> rows;
    long count = home.recentFileCollectionView->numberOfItemsInSection(0);
    for (long row = 0; row < count; ++row) {
      if (cellAt(home, row).moreShown) rows.push_back(row);
    }
    return rows;
  }
};

// The plain line is the e2e home_storage_line scenario's; an unreadable size counts as 0 and the
// line is still built.
TEST_F(HomeViewControllerTest, AnUnreadableVolumeSizeCountsAsZeroInTheStorageLine) {
  auto home = launchHome(R"({"volume": {"size": null, "free": 1000000000, "importantAvailable": 2000000000}})");
  EXPECT_EQ(home->lblInternalStorage->text(), "-2 GB / 0 B");
}
TEST_F(HomeViewControllerTest, AFreshInstallLeavesTheStripAsLaidOutAndEachAppearanceReadsTheListFolded) {
  auto home = launchHome();
  ASSERT_FALSE(defaults().valueForKey(kRecentFilesKey));
  EXPECT_FALSE(home->recentFilesView->isHidden());
  EXPECT_EQ(home->recentFileCollectionView->reloadCount(), 0);
  EXPECT_EQ(home->recentFileCollectionView->numberOfItemsInSection(0), 0);
  // A list changed behind the screen's back is read again, folded, on return.
  saveRecentFiles({File{*URL::withString("file:///a.pdf"), Date{30}, FileType::docs},
                   File{*URL::withString("file:///a.pdf"), Date{20}, FileType::docs},
                   File{*URL::withString("file:///c.zip"), Date{10}, FileType::docs}});
  comeBack();
  EXPECT_FALSE(home->recentFilesView->isHidden());
  EXPECT_EQ(home->recentFileCollectionView->reloadCount(), 1);
  ASSERT_EQ(home->recentFileCollectionView->numberOfItemsInSection(0), 2);
  EXPECT_EQ(cellAt(*home, 0).image, "icon_pdf");
  EXPECT_EQ(cellAt(*home, 1).image, "icon_zip");
}

// The first clear's strip, message and store are the e2e home_storage_line scenario's.
TEST_F(HomeViewControllerTest, ClearingHidesTheStripForGoodAndSaysSoEvenWhenThereWasNothing) {
  auto home = launchHome(withRecents(docs(4)));
  int reloads = home->recentFileCollectionView->reloadCount();
  press(*home, "onMenuBtn:", "btnMenu");
  pressPopupMenuEntry(0);
  settle();
  EXPECT_EQ(home->recentFileCollectionView->reloadCount(), reloads + 1);
  advance(5);
  comeBack();
  EXPECT_TRUE(home->recentFilesView->isHidden());
  ASSERT_FALSE(SVProgressHUD::state().visible);
  press(*home, "onMenuBtn:", "btnMenu");
  pressPopupMenuEntry(0);
  settle();
  EXPECT_TRUE(SVProgressHUD::state().visible);
  EXPECT_EQ(SVProgressHUD::state().status, "Clear recent data successfully...");
}
TEST_F(HomeViewControllerTest, TheMoreMarkSitsOnOneRowByIdiomWhateverTheListLength) {
  struct Row {
    const char* idiom;
    double width;
    int recents;
    std::vector<long> marked;
    double side;
  };
  const Row rows[] = {
      {"phone", 390, 10, {3}, 390 * 0.25 + 30},
      {"pad", 820, 10, {4}, 820.0 / 5 + 30},
      {"phone", 390, 3, {}, 390 * 0.25 + 30},
      {"pad", 820, 4, {}, 820.0 / 5 + 30},
      {"phone", 390, 4, {3}, 390 * 0.25 + 30},
  };
  for (const auto& row : rows) {
    auto device = std::string(R"("device": {"idiom": ")") + row.idiom + R"(", "screen": {"width": )" +
                  std::to_string(row.width) + R"(, "height": 1000, "scale": 2}}, )";
    auto home = launchHome(withRecents(docs(row.recents), device));
    SCOPED_TRACE(std::string(row.idiom) + " with " + std::to_string(row.recents));
    EXPECT_EQ(home->recentFileCollectionView->numberOfItemsInSection(0), row.recents) << "no cap";
    EXPECT_EQ(rowsWithMoreMark(*home), row.marked);
    auto size = home->recentFileCollectionView->frameForItemAtIndexPath({0, 0}).size;
    EXPECT_DOUBLE_EQ(size.width, row.side);
    EXPECT_DOUBLE_EQ(size.height, row.side);
    platform.reset();
  }
}

// Every cell keeps its name hidden. Documents show the icon of their extension; pictures and
// artwork fill the 111-point image view (the short side fits, the long one overflows), a video
// recorded as a photo like a photo.
TEST_F(HomeViewControllerTest, EachKindOfCellShowsItsIconOrThumbnailAndKeepsTheNameHidden) {
  struct Row {
    const char* url;
    const char* kind;
    const char* image;
    const char* name;
  };
  const Row rows[] = {
      // Pictures arrive later: only the cells on screen, the first three, receive them.
      {"assets-library://asset/asset.MOV?id=V1&extMOV", "photo", "pixels:197x111", "CLIP.MOV"},
      {"assets-library://asset/asset.JPG?id=P1&extJPG", "video", "pixels:148x111", "IMG_7.JPG"},
      {"file:///x/report.pdf", "docs", "icon_pdf", "report.pdf"},
      {"file:///x/README", "docs", "icon_folder", "README"},  // no extension
      {"ipod-library://item/item.mp3?id=1311234567890123", "music", "pixels:111x111", "Blue"},
      {"ipod-library://item/item.mp3?id=2000000000000002", "music", "ic_music_placeholder", ""},
  };
  std::string records;
  for (const auto& row : rows) records += (records.empty() ? "" : ",") + recent(row.url, row.kind);
  auto home = launchHome(withRecents(records, R"("photos": {"assets": [
          {"id": "V1/L0/001", "mediaType": 2, "width": 1920, "height": 1080, "filename": "CLIP.MOV"},
          {"id": "P1/L0/001", "filename": "IMG_7.JPG"}]},
      "music": {"songs": [
          {"persistentID": "1311234567890123", "title": "Blue", "fileSize": 10, "artwork": true},
          {"persistentID": "2000000000000002", "title": null, "fileSize": 10, "artwork": false}]}, )"));
  settle();
  for (long i = 0; i < static_cast<long>(std::size(rows)); ++i) {
    SCOPED_TRACE(rows[i].url);
    auto look = cellAt(*home, i);
    EXPECT_EQ(look.image, rows[i].image);
    EXPECT_EQ(look.name, rows[i].name);
    EXPECT_TRUE(look.nameHidden);
  }
  EXPECT_EQ(cellAt(*home, 0).cornerRadius, 25);
  EXPECT_EQ(cellAt(*home, 0).background, std::optional<UIColor>(UIColor::clearColor()));
}

TEST_F(HomeViewControllerTest, AReusedCellKeepsItsLatestThumbnailRequestInTheTag) {
  auto home = launchHome(withRecents(recent("assets-library://asset/asset.JPG?id=P1&extJPG", "photo"),
                                     R"("photos": {"assets": [{"id": "P1/L0/001"}]}, )"));
  auto& strip = *home->recentFileCollectionView;
  strip.layoutSubviews();
  auto cell = std::dynamic_pointer_cast<RecentFilesCollectionViewCell>(strip.cellForItemAtIndexPath({0, 0}));
  ASSERT_TRUE(cell);
  long first = cell->fileImg->tag();
  EXPECT_NE(first, 0);
  comeBack();
  strip.layoutSubviews();
  ASSERT_EQ(strip.cellForItemAtIndexPath({0, 0}), cell) << "the one cell is reused";
  EXPECT_GT(cell->fileImg->tag(), first) << "the refill's own request";
  EXPECT_EQ(cell->fileImg->image()->describe(), "pixels:148x111");
}

TEST_F(HomeViewControllerTest, TheImagesButtonsSetTheSharedFetchAndEachPressPushesItsScreenHalfASecondLater) {
  auto home = launchHome();
  auto images = [&](size_t i) { return std::dynamic_pointer_cast<ImagesVC>(nav()->viewControllers().at(i)); };
  press(*home, "onVideoBtn:");
  EXPECT_EQ(Fetch::shared()->assets()->supportedMediaTypes(), std::set<MediaTypes>{MediaTypes::video}) << "set at the press";
  advance(0.2);
  press(*home, "onImagesBtn:");
  EXPECT_EQ(Fetch::shared()->assets()->supportedMediaTypes(), std::set<MediaTypes>{MediaTypes::image});
  advance(0.29);
  EXPECT_EQ(stack().size(), 2u);
  advance(0.01);
  ASSERT_EQ(stack().size(), 3u);
  EXPECT_EQ(images(2)->mediatype, MediaTypes::video);
  advance(0.2);
  EXPECT_EQ(stack(), (std::vector<std::string>{"SplashVC", "HomeViewController", "ImagesVC", "ImagesVC"}));
  EXPECT_EQ(images(3)->mediatype, MediaTypes::image) << "a new screen at each press";
}

TEST_F(HomeViewControllerTest, TheTitleHidesWhileTheHeaderIsCollapsedAndEachAppearanceStacksANewNativeAd) {
  auto home = launchHome(R"({"ads": {"applovin": {"native": "fill"}}})");
  auto rendered = [&] {
    size_t n = 0;
    for (const auto& sub : home->nativeAdview->subviews()) n += std::dynamic_pointer_cast<MANativeAdView>(sub) ? 1 : 0;
    return n;
  };
  settle();
  EXPECT_EQ(rendered(), 1u);
  EXPECT_FALSE(home->nativeAdview->isHidden());
  home->mainScrollView->setContentOffset({0, 200});
  EXPECT_EQ(home->heightOfHeaderViewConstant->constant(), 50.0);
  EXPECT_TRUE(home->TitleView->isHidden());
  // Collapsed when another screen was pushed, it grows again at the scroll to the top on return.
  comeBack();
  home->mainScrollView->setContentOffset({0, 0});
  EXPECT_EQ(home->heightOfHeaderViewConstant->constant(), 120.0);
  EXPECT_FALSE(home->TitleView->isHidden());
  EXPECT_EQ(rendered(), 2u);
}

using HomeViewControllerDeathTest = HomeViewControllerTest;

TEST_F(HomeViewControllerDeathTest, ARecentWhoseItemHasGoneEndsTheProcess) {
  const std::tuple<const char*, const char*, const char*> rows[] = {
      {"assets-library://asset/asset.JPG?id=GONE&extJPG", "photo", "index 0 beyond bounds for empty fetch result"},
      {"ipod-library://item/item.mp3?id=99", "music", "Index out of range"}};
  for (auto [url, type, message] : rows) {
    EXPECT_DEATH(cellAt(*launchHome(withRecents(recent(url, type))), 0), message);
  }
}

}  // namespace
}  // namespace nimbrel
