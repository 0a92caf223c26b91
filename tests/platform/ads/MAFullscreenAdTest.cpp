#include "platform/ads/MAFullscreenAd.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "FakeAdNetworks.h"
#include "platform/ads/FullScreenAdStage.h"
#include "platform/ads/MAAppOpenAd.h"
#include "platform/ads/MAInterstitialAd.h"
#include "platform/foundation/ManualRunLoop.h"

namespace {

using ads_test::FakeAppLovinNetwork;
using Lines = std::vector<std::string>;

class RecordingAdDelegate : public MAAdDelegate {
 public:
  Lines heard;
  void didLoadAd(const MAAd& ad) override { heard.push_back("didLoadAd " + ad.adUnitIdentifier); }
  void didFailToLoadAdForAdUnitIdentifier(const std::string& unit, const MAError& error) override {
    heard.push_back("didFailToLoadAd " + unit + " " + std::to_string(error.code));
  }
  void didDisplayAd(const MAAd& ad) override { heard.push_back("didDisplayAd " + ad.adUnitIdentifier); }
  void didHideAd(const MAAd& ad) override { heard.push_back("didHideAd " + ad.adUnitIdentifier); }
  void didClickAd(const MAAd&) override { heard.push_back("didClickAd"); }
  void didFailToDisplayAd(const MAAd&, const MAError& error) override {
    heard.push_back("didFailToDisplayAd " + std::to_string(error.code));
  }
  Lines take() { return std::exchange(heard, {}); }
};

class MAFullscreenAdTest : public ::testing::Test {
 public:
  ManualRunLoop loop;
  std::shared_ptr<FakeAppLovinNetwork> network = std::make_shared<FakeAppLovinNetwork>();
  std::shared_ptr<RecordingAdDelegate> delegate = std::make_shared<RecordingAdDelegate>();

  void SetUp() override { AppLovinNetwork::install(network); }

  template <class Ad>
  std::shared_ptr<Ad> make(const std::string& unit) {
    auto ad = std::make_shared<Ad>(unit);
    ad->setDelegate(delegate);
    return ad;
  }
  std::shared_ptr<MAInterstitialAd> loadedInterstitial(const std::string& unit) {
    network->filled.insert(MAAdFormat::interstitial);
    auto ad = make<MAInterstitialAd>(unit);
    ad->loadAd();
    loop.runUntilIdle();
    delegate->take();
    return ad;
  }
};

TEST_F(MAFullscreenAdTest, LoadingReportsToTheDelegateOneTurnLater) {
  struct Row {
    const char* name;
    MAAdFormat format;
    bool fill;
    Lines heard;
  };
  const Row rows[] = {
      {"interstitial with fill", MAAdFormat::interstitial, true, {"didLoadAd unit"}},
      {"interstitial without fill", MAAdFormat::interstitial, false, {"didFailToLoadAd unit 204"}},
      {"app open with fill", MAAdFormat::appOpen, true, {"didLoadAd unit"}},
      {"app open without fill", MAAdFormat::appOpen, false, {"didFailToLoadAd unit 204"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    network->filled.clear();
    if (row.fill) network->filled.insert(row.format);
    std::shared_ptr<MAFullscreenAd> ad;
    if (row.format == MAAdFormat::interstitial) {
      ad = make<MAInterstitialAd>("unit");
    } else {
      ad = make<MAAppOpenAd>("unit");
    }
    EXPECT_FALSE(ad->isReady());

    ad->loadAd();

    EXPECT_TRUE(delegate->heard.empty());
    loop.runUntilIdle();
    EXPECT_EQ(delegate->take(), row.heard);
    EXPECT_EQ(ad->isReady(), row.fill);
  }
}

TEST_F(MAFullscreenAdTest, OneRequestForALoadInFlightAndNoneForAPreloadedInterstitial) {
  network->filled.insert(MAAdFormat::interstitial);
  auto ad = make<MAInterstitialAd>("unit");
  ad->loadAd();
  ad->loadAd();
  loop.runUntilIdle();
  EXPECT_EQ(network->requests, 1);
  EXPECT_EQ(delegate->take(), (Lines{"didLoadAd unit"}));

  network->preloadedInterstitial = true;
  auto interstitial = make<MAInterstitialAd>("held");
  EXPECT_TRUE(interstitial->isReady());
  EXPECT_FALSE(make<MAAppOpenAd>("open")->isReady());
  interstitial->loadAd();
  loop.runUntilIdle();
  EXPECT_EQ(network->requests, 1) << "the held ad is reported again, not requested";
  EXPECT_EQ(delegate->take(), (Lines{"didLoadAd held"}));
}
TEST_F(MAFullscreenAdTest, OnlyAReadyAdShowsAndItGoesOnStageInItsFormatAndIsConsumed) {
  make<MAInterstitialAd>("idle")->showAd();
  loop.runUntilIdle();
  EXPECT_FALSE(FullScreenAdStage::shared().showing().has_value());
  EXPECT_TRUE(delegate->heard.empty());

  auto ad = loadedInterstitial("unit");
  ASSERT_TRUE(ad->isReady());

  ad->showAd();

  auto& stage = FullScreenAdStage::shared();
  ASSERT_TRUE(stage.showing().has_value());
  EXPECT_EQ(stage.showing()->network, "applovin");
  EXPECT_EQ(stage.showing()->format, "interstitial");
  EXPECT_EQ(stage.showing()->adUnit, "unit");
  EXPECT_FALSE(ad->isReady());
  EXPECT_TRUE(delegate->heard.empty());
  loop.runUntilIdle();
  EXPECT_EQ(delegate->take(), (Lines{"didDisplayAd unit"}));
  auto second = loadedInterstitial("second");
  second->showAd();
  loop.runUntilIdle();
  EXPECT_EQ(delegate->take(), (Lines{"didFailToDisplayAd -23"})) << "an ad cannot show over another one";
  EXPECT_EQ(stage.showing()->adUnit, "unit");

  EXPECT_TRUE(stage.close());
  loop.runUntilIdle();
  EXPECT_EQ(delegate->take(), (Lines{"didHideAd unit"}));
  EXPECT_FALSE(stage.showing().has_value());
  EXPECT_FALSE(stage.close());

  network->filled.insert(MAAdFormat::appOpen);
  auto open = make<MAAppOpenAd>("open");
  open->loadAd();
  loop.runUntilIdle();
  open->showAd();
  ASSERT_TRUE(stage.showing().has_value());
  EXPECT_EQ(stage.showing()->format, "appOpen");
}

TEST_F(MAFullscreenAdTest, ADestroyedAdHearsNothing) {
  network->filled.insert(MAAdFormat::interstitial);
  // Steps 0 to 4 load, settle, show, settle and close; the ad goes before step 1 (while it
  // loads), 3 (while it shows) or 5 (after it closed).
  for (int goneBefore : {1, 3, 5}) {
    SCOPED_TRACE(goneBefore);
    auto ad = make<MAInterstitialAd>("unit");
    std::weak_ptr<MAInterstitialAd> weak = ad;
    for (int step = 0; step <= 5; ++step) {
      if (step == goneBefore) {
        delegate->take();
        ad.reset();
      }
      if (step == 0) ad->loadAd();
      if (step == 2 && ad) ad->showAd();
      if (step == 1 || step == 3) loop.runUntilIdle();
      if (step == 4) FullScreenAdStage::shared().close();
    }
    loop.runUntilIdle();
    EXPECT_TRUE(weak.expired());
    EXPECT_EQ(delegate->take(), Lines{});
    EXPECT_FALSE(FullScreenAdStage::shared().showing().has_value());
  }
}

}  // namespace
