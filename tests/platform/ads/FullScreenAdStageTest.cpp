#include "platform/ads/FullScreenAdStage.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/PlatformState.h"

namespace {

TEST(FullScreenAdStageTest, OneAdAtATimeItsCloseActionRunsOnAnEmptyStageAndAResetForgetsAll) {
  FullScreenAdStage& stage = FullScreenAdStage::shared();
  std::vector<std::string> log;
  int changes = 0;
  stage.changed().observe([&] { ++changes; });
  ASSERT_TRUE(stage.present({"applovin", "interstitial", "a"}, [&] {
    log.push_back(stage.showing() ? "closed while still showing" : "closed");
    // The close action may put the next ad up at once.
    bool next = stage.present({"google", "interstitial", "b"}, [&] { log.push_back("b closed"); });
    log.push_back(next ? "next up" : "refused");
  }));
  EXPECT_EQ(changes, 1);
  EXPECT_FALSE(stage.present({"google", "interstitial", "c"}, [&] { log.push_back("wrong"); }));

  EXPECT_TRUE(stage.close());

  EXPECT_EQ(log, (std::vector<std::string>{"closed", "next up"}));
  ASSERT_TRUE(stage.showing().has_value());
  EXPECT_EQ(stage.showing()->adUnit, "b");

  resetPlatformState();

  EXPECT_FALSE(stage.showing().has_value());
  EXPECT_FALSE(stage.close());
  EXPECT_EQ(log, (std::vector<std::string>{"closed", "next up"})) << "a reset runs no close action";
  int before = changes;
  stage.present({"applovin", "appOpen", "d"}, nullptr);
  EXPECT_EQ(changes, before) << "a fresh stage has no observers";
  EXPECT_TRUE(stage.close());
  EXPECT_FALSE(stage.close());
}

}  // namespace
