#include <gtest/gtest.h>

#include "app/core/AppData.h"
#include "app/core/AppDelegate.h"
#include "app/core/ApplicationMain.h"
#include "app/core/Constant.h"
#include "app/core/HomeViewController.h"
#include "app/core/SplashVC.h"
#include "app/SimTest.h"
#include "platform/ads/FullScreenAdStage.h"
#include "platform/foundation/NSFileManager.h"
#include "platform/foundation/NSPathUtilities.h"
#include "platform/libs/SVProgressHUD.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UINavigationController.h"

namespace nimbrel {
namespace {

class LaunchTest : public testing::SimTest {
 protected:
  void launch(const std::string& fixture = "{}") {
    start(fixture);
    NimbrelApplicationMain();
  }
  std::shared_ptr<UINavigationController> nav() {
    return std::dynamic_pointer_cast<UINavigationController>(
        UIApplication::sharedApplication().keyWindow()->rootViewController());
  }
  std::vector<std::string> stack() {
    std::vector<std::string> out;
    for (const auto& vc : nav()->viewControllers()) out.push_back(vc->className());
    return out;
  }
  std::vector<std::string> callsMatching(const std::string& prefix) {
    std::vector<std::string> out;
    for (const auto& c : platform->sdkCalls()) {
      if (c.rfind(prefix, 0) == 0) out.push_back(c);
    }
    return out;
  }
};

TEST_F(LaunchTest, FirstLaunchWritesTheDefaultsAndTheSplashMarksTheFirstRunAsPassed) {
  launch();
  EXPECT_FALSE(defaults().boolForKey("isFirstTime"));
  ASSERT_TRUE(defaults().valueForKey("isFirstTime"));
  EXPECT_TRUE(defaults().boolForKey("kIsListView"));
  advance(3.0);
  EXPECT_TRUE(defaults().boolForKey("isFirstTime"));
}

TEST_F(LaunchTest, ALaterLaunchLeavesTheUsersGridChoiceAlone) {
  launch(R"({"preferences": {"isFirstTime": true, "kIsListView": false}})");
  EXPECT_FALSE(defaults().boolForKey("kIsListView"));
}

TEST_F(LaunchTest, AFalseFirstRunFlagStillCountsAsPresent) {
  launch(R"({"preferences": {"isFirstTime": false}})");
  EXPECT_FALSE(defaults().valueForKey("kIsListView")) << "step 10 writes nothing when the key exists";
  advance(3.0);
  EXPECT_TRUE(defaults().boolForKey("isFirstTime"));
}

TEST_F(LaunchTest, BothListsAreFoldedIntoAppDataBeforeTheFirstScreenLoads) {
  launch(R"({"preferences": {
      "recentFiles": [{"url": "file:///a.pdf", "openingDate": 30, "filetype": "docs"},
                      {"url": "file:///a.pdf", "openingDate": 20, "filetype": "docs"},
                      {"url": "file:///b.txt", "openingDate": 10, "filetype": "docs"}],
      "favFiles": [{"url": "assets-library://asset/asset.MOV?id=X&extMOV", "openingDate": 5, "filetype": "video"}]}})");
  auto data = AppData::shared();
  ASSERT_EQ(data->recentFiles.size(), 2u);
  EXPECT_EQ(data->recentFiles[0].openingDate.timeIntervalSinceReferenceDate, 30);
  ASSERT_EQ(data->FavouriteFiles.size(), 1u);
  EXPECT_EQ(data->FavouriteFiles[0].filetype, FileType::video);
}

TEST_F(LaunchTest, TheLaunchStartsTheOutsideLibrariesInOrder) {
  launch(R"({"device": {"systemVersion": "17.2"}})");
  std::vector<std::string> expected{
      "permission.request tracking -> 3", "ALSdk.setMediationProvider max", "ALSdk.initializeSdk",
      "MANativeAdLoader.loadAd YOUR_AD_UNIT_ID", "GADMobileAds.start",
      "MAInterstitialAd.loadAd YOUR_AD_UNIT_ID"};
  auto calls = platform->sdkCalls();
  calls.resize(std::min(calls.size(), expected.size()));
  EXPECT_EQ(calls, expected);
  EXPECT_EQ(SVProgressHUD::defaultStyle(), SVProgressHUD::Style::dark);
  EXPECT_EQ(SVProgressHUD::defaultMaskType(), SVProgressHUD::MaskType::clear);
  EXPECT_EQ(SVProgressHUD::minimumDismissTimeInterval(), 0.2);
  bool isDirectory = false;
  EXPECT_TRUE(NSFileManager::defaultManager().fileExistsAtPath(
      NSHomeDirectory() + "/Documents/Nimbrel/importedFiles", &isDirectory));
  EXPECT_TRUE(isDirectory);
}

TEST_F(LaunchTest, NoTrackingPromptBeforeSystemVersion14) {
  launch(R"({"device": {"systemVersion": "13.7"}})");
  EXPECT_TRUE(callsMatching("permission.request tracking").empty());
}

TEST_F(LaunchTest, TheDeviceKindFollowsTheIdiom) {
  const std::pair<const char*, DeviceType> rows[] = {
      {"phone", DeviceType::iphone}, {"pad", DeviceType::ipad}, {"unspecified", DeviceType::unspecified}};
  for (auto [idiom, type] : rows) {
    launch(std::string(R"({"device": {"idiom": ")") + idiom + "\"}}");
    EXPECT_EQ(Constant::deviceType(), type) << idiom;
    EXPECT_EQ(Constant::isIpad(), type == DeviceType::ipad) << idiom;
    platform.reset();
  }
}

TEST_F(LaunchTest, TheSplashStandsThreeSecondsThenHomeComesTwoSecondsLaterWithoutAnAd) {
  launch();
  auto splash = std::dynamic_pointer_cast<SplashVC>(nav()->topViewController());
  ASSERT_TRUE(splash);
  EXPECT_TRUE(splash->viewOfAnimation->isAnimationPlaying());
  EXPECT_EQ(splash->viewOfAnimation->loopMode(), LottieLoopMode::loop);
  EXPECT_EQ(splash->viewOfAnimation->animationSpeed(), 0.6);
  EXPECT_EQ(splash->viewOfAnimation->contentMode(), UIViewContentMode::center);
  advance(4.99);
  EXPECT_EQ(stack(), (std::vector<std::string>{"SplashVC"}));
  EXPECT_FALSE(SVProgressHUD::state().visible) << "no ad was ready, so nothing was said";
  advance(0.02);
  EXPECT_EQ(stack(), (std::vector<std::string>{"SplashVC", "HomeViewController"}));
  EXPECT_EQ(nav()->topViewController()->appearance(), UIViewController::Appearance::appeared);
}

TEST_F(LaunchTest, AReadyInterstitialIsAnnouncedShownAndHomeStillComesBeneathIt) {
  launch(R"({"ads": {"applovin": {"interstitial": "ready"}}})");
  advance(3.0);
  auto hud = SVProgressHUD::state();
  EXPECT_TRUE(hud.visible);
  EXPECT_EQ(hud.status, "Loading Ads...");
  advance(0.5 + SVProgressHUD::kFadeOutAnimationDuration);
  ASSERT_TRUE(FullScreenAdStage::shared().showing());
  EXPECT_EQ(FullScreenAdStage::shared().showing()->format, "interstitial");
  advance(1.4);
  EXPECT_EQ(stack(), (std::vector<std::string>{"SplashVC", "HomeViewController"}))
      << "the continuation does not wait for the ad to close";
  EXPECT_TRUE(FullScreenAdStage::shared().showing());

  auto loadsBefore = callsMatching("MAInterstitialAd.loadAd").size();
  FullScreenAdStage::shared().close();
  settle();
  EXPECT_EQ(callsMatching("MAInterstitialAd.loadAd").size(), loadsBefore + 1)
      << "a closed ad loads exactly one new one";
}

TEST_F(LaunchTest, TheAppOpenAdBelongsToAReturnFromTheBackgroundOnly) {
  launch(R"({"ads": {"applovin": {"appOpen": "fill"}}})");
  auto& app = UIApplication::sharedApplication();
  settle();
  EXPECT_TRUE(callsMatching("MAAppOpenAd.loadAd").empty()) << "no app-open ad at a cold start";
  app.enterBackground();
  app.becomeActive();
  settle();
  EXPECT_EQ(callsMatching("MAAppOpenAd.loadAd").size(), 1u);
  ASSERT_TRUE(FullScreenAdStage::shared().showing()) << "shown as soon as it has loaded";
  EXPECT_EQ(FullScreenAdStage::shared().showing()->format, "appOpen");
  FullScreenAdStage::shared().close();
  settle();
  app.becomeActive();
  settle();
  EXPECT_EQ(callsMatching("MAAppOpenAd.loadAd").size(), 1u) << "a second activation without a background loads none";
}

TEST_F(LaunchTest, AFailedAppOpenLoadCallsItsEmptyCompletion) {
  launch();
  UIApplication::sharedApplication().enterBackground();
  UIApplication::sharedApplication().becomeActive();
  settle();
  EXPECT_TRUE(logged("\"didFailToLoadAd(forAdUnitIdentifier:withError:)\""));
  EXPECT_FALSE(FullScreenAdStage::shared().showing());
}

using LaunchDeathTest = LaunchTest;

TEST_F(LaunchDeathTest, AStoredListThatDoesNotDecodeStopsTheLaunch) {
  EXPECT_DEATH(launch(R"({"preferences": {"favFilesBytes": "YnBsaXN0MDA="}})"),
               "file Nimbrel/BasicMethod, line 257");
}

}  // namespace
}  // namespace nimbrel
