#include <gtest/gtest.h>

#include "app/SimTest.h"
#include "app/VC/UIViewControllerExtension.h"
#include "app/core/ApplicationMain.h"
#include "app/viewers/InfoViewController.h"
#include "app/viewers/PhotosInfoVC.h"
#include "platform/libs/SVProgressHUD.h"
#include "platform/photos/PHAsset.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIStoryboard.h"

namespace nimbrel {
namespace {

constexpr const char* kLibrary = R"({"now": "2026-11-22T10:00:00Z", "photos": {"assets": [
  {"id": "MB/L0/001", "width": 4032, "height": 3024, "fileSize": 1048576, "created": "2026-03-01T09:30:00Z"},
  {"id": "SMALL/L0/001", "fileSize": 5000, "editingInput": false},
  {"id": "BIG/L0/001", "fileSize": 1073741824},
  {"id": "MOVIE/L0/001", "mediaType": 2, "fileSize": 1073741824, "video": "composition"}]}})";

class InfoPanelsTest : public testing::SimTest {
 protected:
  void SetUp() override {
    launchToHome(kLibrary);
  }
  template <class T>
  std::shared_ptr<T> present(const char* identifier, const std::function<void(T&)>& fill) {
    auto panel = std::dynamic_pointer_cast<T>(
        UIStoryboard::storyboardWithName("Main").instantiateViewControllerWithIdentifier(identifier));
    fill(*panel);
    panel->setModalPresentationStyle(UIModalPresentationStyle::overCurrentContext);
    UIApplication::sharedApplication().keyWindow()->rootViewController()->presentViewController(panel, false, nullptr);
    return panel;
  }
};

TEST_F(InfoPanelsTest, AnAssetShowsItsSizeAlwaysInMegabytesItsDimensionsAndItsPathLaterOrDotsWithoutAFile) {
  auto info = present<InfoViewController>("InfoVC", [&](auto& p) { p.asset = asset("MB/L0/001"); });
  EXPECT_TRUE(info->popUpView->isHidden());
  EXPECT_EQ(info->lblDimension->text(), "4032*3024");
  EXPECT_EQ(info->lblSize->text(), "1.00 MB");
  EXPECT_EQ(info->lblDate->text(), "1 Mar 2026 09:30");
  EXPECT_EQ(info->lblFileName->text(), "IMG_0001.JPG");
  advance(0.1);
  EXPECT_FALSE(info->popUpView->isHidden());
  ASSERT_FALSE(info->view()->layerAnimations().empty());
  EXPECT_EQ(info->view()->layerAnimations().back().keyPath, "transform.scale");
  EXPECT_NE(info->lblFilePath->text()->find("file:///"), std::string::npos);
  EXPECT_NE(info->lblFilePath->text()->find("IMG_0001.JPG"), std::string::npos);
  info->dismissViewControllerAnimated(false, nullptr);
  settle();

  auto big = present<InfoViewController>("InfoVC", [&](auto& p) { p.asset = asset("BIG/L0/001"); });
  settle();
  EXPECT_EQ(big->lblSize->text(), "1024.00 MB") << "always megabytes";
  big->dismissViewControllerAnimated(false, nullptr);
  settle();
  auto movie = present<InfoViewController>("InfoVC", [&](auto& p) { p.asset = asset("MOVIE/L0/001"); });
  settle();
  EXPECT_EQ(movie->lblFilePath->text(), "...");
  EXPECT_EQ(InfoViewController::megabytesText(5000), "0.00 MB");
}

TEST_F(InfoPanelsTest, ASongsDurationIsThreeRawDoubles) {
  EXPECT_EQ(InfoViewController::durationText(205), "0.0 :3.0 :24.999999999999993");
  EXPECT_EQ(InfoViewController::durationText(0), "0.0 :0.0 :0.0");
  auto info = present<InfoViewController>("InfoVC", [](auto& p) {
    p.model.name = "Blue";
    p.model.identifier = "ipod-library://item/item.mp3?id=1";
    p.model.duration = 205;
  });
  EXPECT_EQ(info->lblDimension->text(), "0.0 :3.0 :24.999999999999993");
  EXPECT_EQ(info->lblFileName->text(), "Blue");
  EXPECT_EQ(info->lblSize->text(), "-") << "the model branch has no size line";
}

TEST_F(InfoPanelsTest, SeveralItemsAreCountedAndSummedInTheBackground) {
  auto info = present<PhotosInfoVC>("PhotosInfoVC", [&](auto& p) {
    for (const char* id : {"BIG/L0/001", "MOVIE/L0/001", "SMALL/L0/001"}) p.models.push_back(PhotoModel::fromAsset(asset(id)));
  });
  EXPECT_EQ(info->lblContain->text(), "3 files");
  loop().runMainUntilIdle();
  EXPECT_EQ(SVProgressHUD::state().status, "Fetching Details...");
  EXPECT_TRUE(info->popUpView->isHidden());
  settle();
  EXPECT_EQ(info->lblSize->text(), "2.00 GB");
  EXPECT_FALSE(info->popUpView->isHidden());
  press(*info, "onDoneBtn:");
  EXPECT_FALSE(info->presentingViewController());
}

// A photo without an editing input ends the process when its address is asked for, as the
// single-item panel does: AssetRequestsDeathTest.

}  // namespace
}  // namespace nimbrel
