#include "platform/ads/GADInterstitialAd.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "FakeAdNetworks.h"
#include "platform/ads/ALSdk.h"
#include "platform/ads/FullScreenAdStage.h"
#include "platform/ads/GADMobileAds.h"
#include "platform/foundation/ManualRunLoop.h"

namespace {

using ads_test::FakeAppLovinNetwork;
using ads_test::FakeGoogleAdsNetwork;
using Lines = std::vector<std::string>;

class RecordingContentDelegate : public GADFullScreenContentDelegate {
 public:
  Lines heard;
  void adDidFailToPresentFullScreenContentWithError(GADInterstitialAd&, const GADError& e) override {
    heard.push_back("didFailToPresent " + std::to_string(e.code));
  }
  void adWillPresentFullScreenContent(GADInterstitialAd&) override { heard.push_back("willPresent"); }
  void adWillDismissFullScreenContent(GADInterstitialAd&) override { heard.push_back("willDismiss"); }
  void adDidDismissFullScreenContent(GADInterstitialAd&) override { heard.push_back("didDismiss"); }
  Lines take() { return std::exchange(heard, {}); }
};

class GADInterstitialAdTest : public ::testing::Test {
 protected:
  ManualRunLoop loop;
  std::shared_ptr<FakeGoogleAdsNetwork> network = std::make_shared<FakeGoogleAdsNetwork>();
  std::shared_ptr<RecordingContentDelegate> delegate = std::make_shared<RecordingContentDelegate>();

  void SetUp() override { GoogleAdsNetwork::install(network); }
};

TEST_F(GADInterstitialAdTest, LoadingAnswersOneTurnLaterWithTheAdOrAnError) {
  for (bool fill : {true, false}) {
    network->fill = fill;
    int answers = 0;
    std::shared_ptr<GADInterstitialAd> loaded;
    std::optional<GADError> error;
    GADInterstitialAd::loadWithAdUnitID("gad-unit", {}, [&](auto ad, auto err) {
      ++answers;
      loaded = ad;
      error = err;
    });
    EXPECT_EQ(answers, 0);
    loop.runUntilIdle();
    EXPECT_EQ(answers, 1);
    EXPECT_EQ(loaded != nullptr, fill);
    EXPECT_EQ(error.has_value(), !fill);
    if (loaded) {
      EXPECT_EQ(loaded->adUnitID(), "gad-unit");
    }
  }
}

TEST_F(GADInterstitialAdTest, PresentAndDismissCallTheDelegateInOrderAndOnlyOnce) {
  std::shared_ptr<GADInterstitialAd> ad;
  GADInterstitialAd::loadWithAdUnitID("gad-unit", {}, [&](auto loaded, auto) { ad = loaded; });
  loop.runUntilIdle();
  ASSERT_NE(ad, nullptr);
  ad->setFullScreenContentDelegate(delegate);

  ad->presentFromRootViewController(nullptr);

  ASSERT_TRUE(FullScreenAdStage::shared().showing().has_value());
  EXPECT_EQ(FullScreenAdStage::shared().showing()->network, "google");
  EXPECT_EQ(FullScreenAdStage::shared().showing()->adUnit, "gad-unit");
  EXPECT_TRUE(delegate->heard.empty());
  loop.runUntilIdle();
  EXPECT_EQ(delegate->take(), (Lines{"willPresent"}));

  FullScreenAdStage::shared().close();
  EXPECT_EQ(delegate->take(), (Lines{"willDismiss"}));
  loop.runUntilIdle();
  EXPECT_EQ(delegate->take(), (Lines{"didDismiss"}));

  ad->presentFromRootViewController(nullptr);
  EXPECT_FALSE(FullScreenAdStage::shared().showing().has_value()) << "an ad presents only once";
  loop.runUntilIdle();
  EXPECT_EQ(delegate->take(), (Lines{"didFailToPresent 18"}));
}

TEST_F(GADInterstitialAdTest, TheSdksStartOnceTheirNetworkAnswers) {
  auto applovin = std::make_shared<FakeAppLovinNetwork>();
  AppLovinNetwork::install(applovin);
  int googleStarted = 0, applovinStarted = 0;

  GADMobileAds::sharedInstance().startWithCompletionHandler([&](const auto&) { ++googleStarted; });
  ALSdk::shared().setMediationProvider("max");
  ALSdk::shared().initializeSdkWithCompletionHandler([&] { ++applovinStarted; });

  EXPECT_FALSE(GADMobileAds::sharedInstance().isStarted());
  EXPECT_FALSE(ALSdk::shared().isInitialized());
  loop.runUntilIdle();
  EXPECT_EQ(googleStarted, 1);
  EXPECT_EQ(applovinStarted, 1);
  EXPECT_TRUE(GADMobileAds::sharedInstance().isStarted());
  EXPECT_TRUE(ALSdk::shared().isInitialized());
}

}  // namespace
