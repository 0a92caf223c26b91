#include "app/kit/ProgressView.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "platform/PlatformState.h"
#include "platform/foundation/ManualRunLoop.h"

namespace nimbrel {
namespace {

class ProgressViewTest : public ::testing::Test {
 protected:
  ManualRunLoop loop;
  std::shared_ptr<ProgressView> view;
  void SetUp() override {
    resetPlatformState();
    view = std::make_shared<ProgressView>(CGRectMake(0, 0, 100, 80));
  }
  void TearDown() override { resetPlatformState(); }
};

TEST_F(ProgressViewTest, ThePercentageIsTheProgressTimesAHundredCutToAWholeNumberInTheOneLabel) {
  EXPECT_TRUE(view->subviews().empty()) << "nothing drawn yet";
  const std::pair<double, const char*> rows[] = {
      {0.756, "75%"}, {0.999, "99%"}, {1.0, "100%"}, {0, "0%"}, {-0.005, "0%"}, {-0.019, "-1%"},
      {0.29, "28%"},  // 0.29 × 100 is 28.999999999999996 in binary
      {12.5, "1250%"},
  };
  for (auto [progress, text] : rows) {
    view->set(progress, 0.2);
    EXPECT_EQ(view->labelPercentage()->text(), text) << progress;
  }
  ASSERT_EQ(view->subviews().size(), 1u);
  EXPECT_EQ(view->subviews()[0], view->labelPercentage());
  EXPECT_EQ(view->labelPercentage()->frame(), CGRectMake(0, 0, 100, 80));
  view->redraw();
  EXPECT_EQ(view->subviews().size(), 1u);
}

// Each set animates the arc from the last progress; a redraw shows a bare ring until the next set.
TEST_F(ProgressViewTest, EachSetAnimatesTheArcFromTheLastProgressAndARedrawShowsABareRing) {
  view->set(0.756, 0.2);
  ASSERT_TRUE(view->lastAnimation());
  EXPECT_EQ(view->lastAnimation()->keyPath, "strokeEnd");
  EXPECT_EQ(view->lastAnimation()->fromValue, 0);
  EXPECT_EQ(view->lastAnimation()->toValue, 0.756);
  EXPECT_EQ(view->lastAnimation()->duration, 0.2);
  view->setColor(UIColor::systemGreenColor());
  view->set(0.6, 1.5);
  EXPECT_EQ(view->lastAnimation()->fromValue, 0.756);
  EXPECT_EQ(view->lastAnimation()->duration, 1.5);
  EXPECT_EQ(view->progressArc().strokeEnd, 0.6);

  view->redraw();
  // Both arcs run from twelve o'clock round, the progress one empty.
  for (const auto* arc : {&view->circleArc(), &view->progressArc()}) {
    EXPECT_EQ(arc->center, (CGPoint{50, 40}));
    EXPECT_EQ(arc->strokeColor, UIColor::systemGreenColor());
  }
  EXPECT_EQ(view->circleArc().strokeEnd, 1.0);
  EXPECT_EQ(view->progressArc().strokeEnd, 0.0);
  EXPECT_EQ(view->progressArc().radius, 36.5) << "the thick arc fits in the shorter side";
  EXPECT_EQ(view->labelPercentage()->text(), "60%") << "the label is not part of the drawing";

  view->set(0.7, 0.1);
  EXPECT_EQ(view->progressArc().strokeEnd, 0.7);
  EXPECT_EQ(view->lastAnimation()->fromValue, 0.6);
}

TEST_F(ProgressViewTest, APercentageThatIsNoWholeNumberEndsTheProcess) {
  EXPECT_DEATH(view->set(std::numeric_limits<double>::quiet_NaN(), 0.2), "infinite or NaN");
  EXPECT_DEATH(view->set(std::numeric_limits<double>::infinity(), 0.2), "infinite or NaN");
  EXPECT_DEATH(view->set(1e17, 0.2), "greater than Int.max");
  EXPECT_DEATH(view->set(-1e17, 0.2), "less than Int.min");
  // -2^63 is the last value that still fits.
  view->set(-std::ldexp(1.0, 63) / 100, 0);
  EXPECT_EQ(view->labelPercentage()->text(), "-9223372036854775808%");
}

}  // namespace
}  // namespace nimbrel
