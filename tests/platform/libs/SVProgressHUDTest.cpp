#include "platform/libs/SVProgressHUD.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/PlatformState.h"
#include "platform/foundation/ManualRunLoop.h"

namespace {

using Kind = SVProgressHUD::Kind;

class SVProgressHUDTest : public ::testing::Test {
 protected:
  ManualRunLoop loop;
  std::vector<std::string> heard;

  // The display time the app sets before any status; restart() sets it again after a reset.
  void SetUp() override { SVProgressHUD::setMinimumDismissTimeInterval(0.2); }
  void restart() {
    resetPlatformState();
    heard.clear();
    SetUp();
  }
  SVProgressHUD::Completion note(std::string what) {
    return [this, what] { heard.push_back(what); };
  }
  // Where the overlay stands: "hidden", "shown" or "fading".
  static std::string phase() {
    auto s = SVProgressHUD::state();
    if (!s.visible) return s.fadingOut ? "hidden but fading" : "hidden";
    return s.fadingOut ? "fading" : "shown";
  }
};

TEST_F(SVProgressHUDTest, ShowAndDismissTakeEffectOneTurnLaterAndAreSignalled) {
  int changes = 0;
  SVProgressHUD::changed().observe([&] { ++changes; });
  SVProgressHUD::showWithStatus("Loading Ads...");
  EXPECT_EQ(phase(), "hidden");
  loop.runUntilIdle();
  EXPECT_EQ(phase(), "shown");
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(SVProgressHUD::state().kind, Kind::status);
  EXPECT_EQ(SVProgressHUD::state().status, "Loading Ads...");

  SVProgressHUD::dismiss();
  EXPECT_EQ(phase(), "shown");
  loop.runUntilIdle();
  EXPECT_EQ(phase(), "fading");
  loop.advance(0.149);
  EXPECT_EQ(phase(), "fading");
  loop.advance(0.001);
  EXPECT_EQ(phase(), "hidden");
  EXPECT_EQ(SVProgressHUD::state().status, std::nullopt);
  EXPECT_EQ(changes, 3) << "fade start and end";

  resetPlatformState();
  SVProgressHUD::showWithStatus("B");
  loop.runUntilIdle();
  EXPECT_EQ(changes, 3) << "a fresh library has no observers";
}
TEST_F(SVProgressHUDTest, DisplayTimeGrowsWithTheStatusInUtf16Units) {
  struct Row {
    double minimum, maximum;
    std::optional<std::string> status;
    double seconds;
  };
  const double none = std::numeric_limits<double>::max();
  const Row rows[] = {
      {0.2, none, "Mark as Favourite....", 1.76},
      {0.2, none, "Clear recent data successfully...", 2.48},
      {0.2, none, "OK", 0.62},
      {1.0, none, "OK", 1.0},
      {5.0, none, "Clear recent data successfully...", 5.0},
      {0.2, none, std::nullopt, 0.5},
      {0.2, none, "", 0.5},
      {0.2, none, "Gelöscht", 0.98},                      // ö is one unit
      {0.2, none, "Done \xF0\x9F\x98\x80", 0.92},          // an emoji is two units
      {0.2, none, "\xE2\x9C\x93", 0.56},                   // a check mark is one unit
      {0.2, 1.5, "Clear recent data successfully...", 1.5},
      {3.0, 2.0, "OK", 2.0},
  };
  for (const auto& row : rows) {
    SVProgressHUD::setMinimumDismissTimeInterval(row.minimum);
    SVProgressHUD::setMaximumDismissTimeInterval(row.maximum);
    EXPECT_NEAR(SVProgressHUD::displayDurationForString(row.status), row.seconds, 1e-9)
        << row.status.value_or("(none)") << " min " << row.minimum;
  }
}

TEST_F(SVProgressHUDTest, MarkedStatusesSelfDismissAfterTheirDisplayTimeThenFadeAndPlainOnesStay) {
  struct Row {
    const char* name;
    void (*show)(const std::string&);
    Kind kind;
    bool selfDismisses;
  };
  const Row rows[] = {
      {"info", [](const std::string& s) { SVProgressHUD::showInfoWithStatus(s); }, Kind::info, true},
      {"success", [](const std::string& s) { SVProgressHUD::showSuccessWithStatus(s); }, Kind::success, true},
      {"error", [](const std::string& s) { SVProgressHUD::showErrorWithStatus(s); }, Kind::error, true},
      {"image", [](const std::string& s) { SVProgressHUD::showImage(UIImage::named("star"), s); },
       Kind::image, true},
      {"show", [](const std::string&) { SVProgressHUD::show(); }, Kind::status, false},
      {"status", [](const std::string& s) { SVProgressHUD::showWithStatus(s); }, Kind::status, false},
      {"progress", [](const std::string& s) { SVProgressHUD::showProgress(0.4f, s); }, Kind::progress, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    restart();
    row.show("Mark as Favourite....");
    loop.runUntilIdle();
    EXPECT_EQ(SVProgressHUD::state().kind, row.kind);
    if (!row.selfDismisses) {
      loop.advance(3600);
      EXPECT_EQ(phase(), "shown");
      continue;
    }
    EXPECT_NE(SVProgressHUD::state().image, std::nullopt);
    loop.advance(1.76 - 0.001);
    EXPECT_EQ(phase(), "shown");
    loop.advance(0.001);
    EXPECT_EQ(phase(), "fading");
    loop.advance(SVProgressHUD::kFadeOutAnimationDuration);
    EXPECT_EQ(phase(), "hidden");
  }
  EXPECT_FLOAT_EQ(SVProgressHUD::state().progress, 0.4f);
}

// A self-dismissal's clock starts at its own show, with the display time of that moment, and a
// plain show cancels it.
TEST_F(SVProgressHUDTest, SelfDismissalTimers) {
  SVProgressHUD::showSuccessWithStatus("OK");  // 0.62 s
  loop.advance(0.5);
  SVProgressHUD::showErrorWithStatus("Mark as Favourite....");  // 1.76 s from 0.5 s
  loop.advance(1.759);
  EXPECT_EQ(phase(), "shown");
  EXPECT_EQ(SVProgressHUD::state().kind, Kind::error);
  loop.advance(0.001);
  EXPECT_EQ(phase(), "fading");

  restart();
  SVProgressHUD::showSuccessWithStatus("OK");
  SVProgressHUD::setMinimumDismissTimeInterval(5.0);
  loop.advance(0.62);
  EXPECT_EQ(phase(), "fading") << "the display time is fixed at the show";
  restart();
  SVProgressHUD::showSuccessWithStatus("OK");
  loop.advance(0.5);
  SVProgressHUD::showWithStatus("Loading");
  loop.advance(10);
  EXPECT_EQ(phase(), "shown");
  EXPECT_EQ(SVProgressHUD::state().status, "Loading");
}
TEST_F(SVProgressHUDTest, DismissWithDelayFadesAfterTheDelayThenCompletes) {
  for (double delay : {0.0, 0.5, 2.0}) {
    SCOPED_TRACE(delay);
    restart();
    SVProgressHUD::showWithStatus("Loading Ads...");
    SVProgressHUD::dismissWithDelay(delay, note("completed"));
    loop.runUntilIdle();
    EXPECT_EQ(phase(), delay > 0 ? "shown" : "fading");

    if (delay > 0) loop.advance(delay - 0.001);
    EXPECT_EQ(phase(), delay > 0 ? "shown" : "fading");
    if (delay > 0) loop.advance(0.001);
    EXPECT_EQ(phase(), "fading");
    loop.advance(SVProgressHUD::kFadeOutAnimationDuration - 0.001);
    EXPECT_TRUE(heard.empty());
    loop.advance(0.001);
    EXPECT_EQ(heard, (std::vector<std::string>{"completed"}));
    EXPECT_EQ(phase(), "hidden");
  }
}

// The library does not cancel a delayed dismissal: it takes an overlay shown meanwhile with it.
// Only a show during the fade stops the dismissal, and its completion never runs.
TEST_F(SVProgressHUDTest, AShowDuringADelayedDismissalGoesWithItButOneDuringTheFadeStopsIt) {
  for (double showAt : {0.2, 0.6}) {
    SCOPED_TRACE(showAt);
    restart();
    const bool duringTheFade = showAt > 0.5;
    SVProgressHUD::showWithStatus("Loading Ads...");
    SVProgressHUD::dismissWithDelay(0.5, note("completed"));
    loop.advance(showAt);
    ASSERT_EQ(phase(), duringTheFade ? "fading" : "shown");

    SVProgressHUD::showWithStatus("Again");
    loop.advance(0.5 + SVProgressHUD::kFadeOutAnimationDuration + 0.01 - showAt);

    EXPECT_EQ(phase(), duringTheFade ? "shown" : "hidden") << "just after the first fade's end";
    loop.advance(10);
    EXPECT_EQ(phase(), duringTheFade ? "shown" : "hidden");
    EXPECT_EQ(heard, duringTheFade ? std::vector<std::string>{} : std::vector<std::string>{"completed"});
    if (duringTheFade) {
      EXPECT_EQ(SVProgressHUD::state().status, "Again");
    }
  }
}

TEST_F(SVProgressHUDTest, ALaterDismissalDuringAFadeKeepsTheEarlierCompletion) {
  struct Row {
    const char* name;
    void (*second)(SVProgressHUD::Completion);
    std::vector<std::string> heard;
  };
  const Row rows[] = {
      {"explicit dismissal",
       [](SVProgressHUD::Completion c) { SVProgressHUD::dismissWithCompletion(std::move(c)); },
       {"first", "second"}},
      {"self-dismissal timer", [](SVProgressHUD::Completion) {}, {"first"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    restart();
    SVProgressHUD::showSuccessWithStatus("OK");  // its own fade would start at 0.62 s
    loop.advance(0.55);

    SVProgressHUD::dismissWithCompletion(note("first"));
    loop.advance(0.05);
    row.second(note("second"));
    loop.advance(1.0);

    EXPECT_EQ(heard, row.heard);
    EXPECT_EQ(phase(), "hidden");
  }
}

TEST_F(SVProgressHUDTest, AHiddenOverlayDismissedStillCompletesAfterTheFadeAndALateSelfDismissalLeavesItAlone) {
  SVProgressHUD::dismissWithCompletion(note("completed"));
  loop.runUntilIdle();
  EXPECT_EQ(phase(), "hidden");
  loop.advance(SVProgressHUD::kFadeOutAnimationDuration);
  EXPECT_EQ(heard, (std::vector<std::string>{"completed"}));

  SVProgressHUD::showSuccessWithStatus("OK");  // 0.62 s
  loop.advance(0.1);
  SVProgressHUD::dismiss();
  loop.advance(0.3);
  ASSERT_EQ(phase(), "hidden");
  int changes = 0;
  SVProgressHUD::changed().observe([&] { ++changes; });

  loop.advance(0.3);  // past the 0.62 s timer

  EXPECT_EQ(phase(), "hidden");
  EXPECT_EQ(changes, 0);
}

}  // namespace
