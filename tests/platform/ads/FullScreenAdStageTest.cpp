#include "platform/ads/FullScreenAdStage.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/PlatformState.h"

namespace {

class FullScreenAdStageTest : public ::testing::Test {
 protected:
  FullScreenAdStage& stage = FullScreenAdStage::shared();
  void SetUp() override { resetPlatformState(); }
  void TearDown() override { resetPlatformState(); }
};

TEST_F(FullScreenAdStageTest, OneAdAtATimeAndItsCloseActionRunsOnAnEmptyStage) {
  std::vector<std::string> log;
  ASSERT_TRUE(stage.present({"applovin", "interstitial", "a"}, [&] {
    log.push_back(stage.showing() ? "closed while still showing" : "closed");
    // The close action may put the next ad up at once.
    log.push_back(stage.present({"google", "interstitial", "b"}, nullptr) ? "next up" : "refused");
  }));
  EXPECT_FALSE(stage.present({"google", "interstitial", "c"}, [&] { log.push_back("wrong"); }));

  EXPECT_TRUE(stage.close());

  EXPECT_EQ(log, (std::vector<std::string>{"closed", "next up"}));
  ASSERT_TRUE(stage.showing().has_value());
  EXPECT_EQ(stage.showing()->adUnit, "b");
  EXPECT_TRUE(stage.close());
  EXPECT_FALSE(stage.close());
}

TEST_F(FullScreenAdStageTest, ChangesAreSignalledAndAFreshStageHasNoObserversOrAd) {
  int changes = 0;
  bool closed = false;
  stage.changed().observe([&] { ++changes; });
  stage.present({"applovin", "appOpen", "a"}, [&] { closed = true; });
  EXPECT_EQ(changes, 1);

  resetPlatformState();

  EXPECT_FALSE(stage.showing().has_value());
  EXPECT_FALSE(stage.close());
  EXPECT_FALSE(closed);
  stage.present({"applovin", "appOpen", "b"}, nullptr);
  EXPECT_EQ(changes, 1);
}

}  // namespace
