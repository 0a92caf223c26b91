#include "platform/libs/MGCollapsingHeaderView.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/foundation/ManualRunLoop.h"

namespace {

class Recorder : public MGCollapsingHeaderDelegate {
 public:
  void headerDidCollapseToOffset(double offset) override { calls.push_back("collapse " + number(offset)); }
  void headerDidFinishCollapsing() override { calls.push_back("finish collapsing"); }
  void headerDidExpandToOffset(double offset) override { calls.push_back("expand " + number(offset)); }
  void headerDidFinishExpanding() override { calls.push_back("finish expanding"); }
  std::vector<std::string> take() { return std::exchange(calls, {}); }

 private:
  static std::string number(double v) { return std::to_string(static_cast<int>(v)); }
  std::vector<std::string> calls;
};

class MGCollapsingHeaderViewTest : public ::testing::Test {
 protected:
  ManualRunLoop loop;
  std::shared_ptr<MGCollapsingHeaderView> header = std::make_shared<MGCollapsingHeaderView>();
  std::shared_ptr<NSLayoutConstraint> height = std::make_shared<NSLayoutConstraint>();
  std::shared_ptr<Recorder> delegate = std::make_shared<Recorder>();
  std::shared_ptr<UIScrollView> scroll = std::make_shared<UIScrollView>(CGRectMake(0, 0, 390, 600));

  void SetUp() override {
    height->setConstant(200);
    header->setMinimumHeaderHeight(60);
    header->setCollapsingConstraint(height);
    header->setDelegate(delegate);
    scroll->setContentSize({390, 2000});
  }

  void scrollTo(double y) {
    scroll->setContentOffset({0, y});
    header->collapseWithScroll(*scroll);
  }
};

TEST_F(MGCollapsingHeaderViewTest, TheHeightFollowsTheScrollWhileThereIsRoomAndEachFinishIsHeardOncePerArrival) {
  struct Step {
    double offset;
    double constant;
    double progress;
    std::vector<std::string> heard;
  };
  const std::vector<Step> steps = {
      {50, 150, 50.0 / 140, {"collapse 50"}},
      {100, 100, 100.0 / 140, {"collapse 100"}},
      {140, 60, 1, {"finish collapsing"}},
      {200, 60, 1, {}},
      {150, 60, 1, {}},
      {120, 80, 120.0 / 140, {"expand 120"}},
      {130, 70, 130.0 / 140, {"collapse 130"}},
      {20, 180, 20.0 / 140, {"expand 20"}},
      {0, 200, 0, {"finish expanding"}},
      {-30, 200, 0, {}},
      {500, 60, 1, {"finish collapsing"}},
      {-10, 200, 0, {"finish expanding"}},
  };
  for (const auto& step : steps) {
    scrollTo(step.offset);
    EXPECT_EQ(height->constant(), step.constant) << "at " << step.offset;
    EXPECT_DOUBLE_EQ(header->progress(), step.progress) << "at " << step.offset;
    EXPECT_EQ(delegate->take(), step.heard) << "at " << step.offset;
  }

  // Nothing moves without room to collapse, or without a constraint.
  header->setMinimumHeaderHeight(200);
  scrollTo(100);
  EXPECT_EQ(height->constant(), 200);
  EXPECT_EQ(header->progress(), 0);
  auto bare = std::make_shared<MGCollapsingHeaderView>();
  bare->setDelegate(delegate);
  bare->collapseWithScroll(*scroll);
  EXPECT_FALSE(bare->headerHeight());
  EXPECT_TRUE(delegate->take().empty());
}

TEST_F(MGCollapsingHeaderViewTest, TheFullHeightIsTheConstantAtTheFirstCollapseOfEachConstraint) {
  // Given a constant changed after the constraint was set but before any scroll
  height->setConstant(180);
  scrollTo(0);
  EXPECT_EQ(header->headerHeight(), 180);

  // When the header collapses fully and comes back
  scrollTo(400);
  scrollTo(0);

  // Then it returns to the height it first had, not to a later constant
  EXPECT_EQ(height->constant(), 180);

  // A new constraint brings its own full height
  auto other = std::make_shared<NSLayoutConstraint>();
  other->setConstant(120);
  header->setCollapsingConstraint(other);
  scrollTo(30);
  EXPECT_EQ(header->headerHeight(), 120);
  EXPECT_EQ(other->constant(), 90);
  EXPECT_EQ(height->constant(), 180) << "the old constraint is left alone";
}

TEST_F(MGCollapsingHeaderViewTest, WithoutAlwaysCollapseOnlyContentTallerThanViewAndDistanceCollapses) {
  header->setAlwaysCollapse(false);
  // 600 of view + 140 of collapse distance: 740 is not enough.
  scroll->setContentSize({390, 740});
  scrollTo(100);
  EXPECT_EQ(height->constant(), 200);
  EXPECT_TRUE(delegate->take().empty());

  scroll->setContentSize({390, 741});
  scrollTo(100);
  EXPECT_EQ(height->constant(), 100);
  EXPECT_EQ(delegate->take(), (std::vector<std::string>{"collapse 100"}));

  // Content that became short still lets a collapsed header grow back.
  scroll->setContentSize({390, 100});
  scrollTo(0);
  EXPECT_EQ(height->constant(), 200);
  EXPECT_EQ(delegate->take(), (std::vector<std::string>{"finish expanding"}));

  header->setAlwaysCollapse(true);
  scrollTo(100);
  EXPECT_EQ(height->constant(), 100) << "always collapsing ignores the content size";
}

TEST_F(MGCollapsingHeaderViewTest, AnAlphaAttributeFadesItsViewByValueTimesProgressFromItsOwnAlpha) {
  auto title = std::make_shared<UIView>();
  auto dim = std::make_shared<UIView>();
  dim->setAlpha(0.5);
  auto moved = std::make_shared<UIView>();
  header->addTransformingSubview(title, {MGTransform::transformAttribute(5, -0.9)});
  header->addTransformingSubview(dim, {MGTransform::transformAttribute(5, -0.9)});
  header->addTransformingSubview(moved, {MGTransform::transformAttribute(2, 20)});

  scrollTo(70);  // halfway
  EXPECT_DOUBLE_EQ(title->alpha(), 0.55);
  EXPECT_DOUBLE_EQ(dim->alpha(), 0.05);

  scrollTo(140);
  EXPECT_DOUBLE_EQ(title->alpha(), 0.1);
  EXPECT_EQ(dim->alpha(), 0) << "clamped at transparent";
  EXPECT_EQ(moved->alpha(), 1) << "geometry is left to the shell";

  scrollTo(0);
  EXPECT_EQ(title->alpha(), 1);
  EXPECT_EQ(dim->alpha(), 0.5);
}

}  // namespace
