#include <gtest/gtest.h>

#include "app/core/AppDelegate.h"
#include "app/core/ApplicationMain.h"
#include "app/SimTest.h"
#include "platform/ads/FullScreenAdStage.h"
#include "platform/foundation/NSFileManager.h"
#include "platform/foundation/NSPathUtilities.h"
#include "platform/uikit/UIApplication.h"

namespace nimbrel {
namespace {

class LaunchTest : public testing::SimTest {
 protected:
  void launch(const std::string& fixture = "{}") {
    start(fixture);
    NimbrelApplicationMain();
  }
};

// The first launch's defaults, the splash's three seconds and the plain hand-over to home are the
// e2e launch_to_home scenario's; a later launch's grid choice and both stored lists folded at
// launch are stored_lists_are_folded's.
TEST_F(LaunchTest, AFalseFirstRunFlagStillCountsAsPresent) {
  launch(R"({"preferences": {"isFirstTime": false}})");
  EXPECT_FALSE(defaults().valueForKey("kIsListView")) << "step 10 writes nothing when the key exists";
  advance(3.0);
  EXPECT_TRUE(defaults().boolForKey("isFirstTime"));
}

TEST_F(LaunchTest, TheLaunchStartsTheOutsideLibrariesInOrderAndPromptsForTrackingFrom14) {
  launch(R"({"device": {"systemVersion": "17.2"}})");
  std::vector<std::string> expected{
      "permission.request tracking -> 3", "ALSdk.setMediationProvider max", "ALSdk.initializeSdk",
      "MANativeAdLoader.loadAd YOUR_AD_UNIT_ID", "GADMobileAds.start",
      "MAInterstitialAd.loadAd YOUR_AD_UNIT_ID"};
  auto sdk = platform->sdkCalls();
  sdk.resize(std::min(sdk.size(), expected.size()));
  EXPECT_EQ(sdk, expected);
  bool isDirectory = false;
  EXPECT_TRUE(NSFileManager::defaultManager().fileExistsAtPath(
      NSHomeDirectory() + "/Documents/Nimbrel/importedFiles", &isDirectory));
  EXPECT_TRUE(isDirectory);
  platform.reset();
  launch(R"({"device": {"systemVersion": "13.7"}})");
  EXPECT_EQ(calls("permission.request tracking"), 0u) << "no tracking prompt before 14";
}

// Announcing and showing the ready ad with home beneath it is the e2e splash_with_ready_interstitial
// scenario's.
TEST_F(LaunchTest, AClosedLaunchInterstitialLoadsExactlyOneNewOne) {
  launch(R"({"ads": {"applovin": {"interstitial": "ready"}}})");
  advance(5.0);
  ASSERT_TRUE(FullScreenAdStage::shared().showing());
  auto loadsBefore = calls("MAInterstitialAd.loadAd");
  FullScreenAdStage::shared().close();
  settle();
  EXPECT_EQ(calls("MAInterstitialAd.loadAd"), loadsBefore + 1);
}
// The ad at each return from the background is the e2e app_open_ad_on_return scenario's.
TEST_F(LaunchTest, TheAppOpenAdLoadsOnlyAfterABackground) {
  launch(R"({"ads": {"applovin": {"appOpen": "fill"}}})");
  auto& app = UIApplication::sharedApplication();
  settle();
  EXPECT_EQ(calls("MAAppOpenAd.loadAd"), 0u) << "no app-open ad at a cold start";
  app.enterBackground();
  app.becomeActive();
  settle();
  FullScreenAdStage::shared().close();
  settle();
  app.becomeActive();
  settle();
  EXPECT_EQ(calls("MAAppOpenAd.loadAd"), 1u) << "a second activation without a background loads none";
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
