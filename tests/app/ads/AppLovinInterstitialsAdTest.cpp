#include "app/ads/AppLovinInterstitialsAd.h"

#include <gtest/gtest.h>

#include "app/SimTest.h"
#include "platform/ads/FullScreenAdStage.h"
#include "platform/libs/SVProgressHUD.h"

namespace nimbrel {
namespace {

class AppLovinInterstitialsAdTest : public testing::SimTest {};

// An offer with a ready ad announces it for half a second and shows it once the overlay has faded:
// the e2e splash_with_ready_interstitial scenario and StorageAnalysisVCTest.
TEST_F(AppLovinInterstitialsAdTest, AFailedLoadSaysSoAndAnOfferWithoutAReadyAdDoesNothing) {
  start(R"({"ads": {"applovin": {"interstitial": "nofill"}}})");
  auto ads = AppLovinInterstitialsAd::shared();
  std::vector<bool> answers;
  ads->load([&](bool ok) { answers.push_back(ok); });
  settle();
  EXPECT_EQ(answers, std::vector<bool>{false}) << "the load reports that it did not work";
  ads->offerInterstitial();
  advance(10);
  EXPECT_FALSE(SVProgressHUD::state().visible);
  EXPECT_FALSE(FullScreenAdStage::shared().showing());
  EXPECT_EQ(calls("MAInterstitialAd.loadAd"), 1u) << "no retry";
}

TEST_F(AppLovinInterstitialsAdTest, TheContinuationRunsTwoSecondsLaterWithOrWithoutAnAd) {
  for (const char* fill : {"ready", "nofill"}) {
    start(std::string(R"({"ads": {"applovin": {"interstitial": ")") + fill + "\"}}}");
    AppLovinInterstitialsAd::shared()->load([](bool) {});
    settle();
    bool ran = false;
    AppLovinInterstitialsAd::shared()->offerThenContinue(false, false, 0, 0, "test", [&] { ran = true; });
    settle();
    EXPECT_EQ(FullScreenAdStage::shared().showing().has_value(), std::string(fill) == "ready")
        << "without the overlay the ad shows at once";
    advance(1.99);
    EXPECT_FALSE(ran) << fill;
    advance(0.01);
    EXPECT_TRUE(ran) << fill;
    platform.reset();
  }
}

TEST_F(AppLovinInterstitialsAdTest, ARandomisedOfferWithABoundOfOneAlwaysHits) {
  start();
  bool ran = false;
  AppLovinInterstitialsAd::shared()->offerThenContinue(false, true, 1, 1, "test", [&] { ran = true; });
  advance(2);
  EXPECT_TRUE(ran);
  ran = false;
  AppLovinInterstitialsAd::shared()->offerThenContinue(false, true, 1, 2, "test", [&] { ran = true; });
  advance(2);
  EXPECT_FALSE(ran) << "a miss stops the continuation too";
}

using AppLovinInterstitialsAdDeathTest = AppLovinInterstitialsAdTest;

TEST_F(AppLovinInterstitialsAdDeathTest, MissingStateIsFatalByDesign) {
  start();
  EXPECT_DEATH(AppLovinInterstitialsAd::shared()->offerThenContinue(false, true, 0, 1, "test", [] {}),
               "Fatal error: Range requires lowerBound <= upperBound");
  EXPECT_DEATH(AppLovinInterstitialsAd::shared()->didLoadAd(MAAd{}),
               "Fatal error: Unexpectedly found nil while unwrapping an Optional value: file "
               "Nimbrel/AppLovinInterstitialsAd");
}

}  // namespace
}  // namespace nimbrel
