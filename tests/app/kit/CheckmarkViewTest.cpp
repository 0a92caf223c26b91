#include "app/kit/CheckmarkView.h"

#include <gtest/gtest.h>

#include "platform/PlatformState.h"
#include "platform/foundation/ManualRunLoop.h"
#include "platform/uikit/UIButton.h"

namespace nimbrel {
namespace {

class CheckmarkViewTest : public ::testing::Test {
 protected:
  ManualRunLoop loop;
  void SetUp() override { resetPlatformState(); }
  void TearDown() override { resetPlatformState(); }
};

TEST_F(CheckmarkViewTest, TheDiscIsTheBoundsInsetByThreeOnWholePoints) {
  struct Row {
    CGSize size;
    CGRect oval;
  };
  const Row rows[] = {
      {{24, 24}, CGRectMake(3, 3, 18, 18)},
      {{30, 20}, CGRectMake(3, 3, 24, 14)},
      {{24.6, 24.4}, CGRectMake(3, 3, 19, 18)},  // right edge 21.6 and bottom 21.4 round to 22 and 21
      {{4, 4}, CGRectMake(3, 3, 0, 0)},          // too small for a disc: nothing, not a negative rect
  };
  for (const auto& row : rows) {
    auto view = std::make_shared<CheckmarkView>(CGRect{{5, 5}, row.size});
    EXPECT_EQ(view->drawing().oval, row.oval) << row.size.width << " x " << row.size.height;
  }
}

TEST_F(CheckmarkViewTest, TheColoursFollowTheSelection) {
  AppThemeColor theme;
  auto view = std::make_shared<CheckmarkView>(CGRectMake(0, 0, 24, 24));
  struct Row {
    bool selected;
    UIColor shadow, fill, stroke;
  };
  const Row rows[] = {
      {false, theme.unselectionShadowColor(), UIColor::whiteColor(), UIColor::clearColor()},
      {true, theme.selectionShadowColor(), theme.AppTheme(), UIColor::whiteColor()},
  };
  for (const auto& row : rows) {
    view->setSelected(row.selected);
    auto d = view->drawing();
    EXPECT_EQ(d.shadowColor, row.shadow) << "selected " << row.selected;
    EXPECT_EQ(d.fillColor, row.fill) << "selected " << row.selected;
    EXPECT_EQ(d.strokeColor, row.stroke) << "selected " << row.selected;
    EXPECT_EQ(d.shadowOffset, (CGSize{0.1, -0.1}));
    EXPECT_EQ(d.shadowBlur, 2.5);
    EXPECT_EQ(d.lineWidth, 1.0);
    EXPECT_EQ(d.check, (std::vector<CGPoint>{{7.0, 12.5}, {11.0, 16.0}, {17.5, 9.5}}));
  }
  EXPECT_EQ(view->backgroundColor(), UIColor::clearColor());
}

TEST_F(CheckmarkViewTest, APressWiredToTheMarkTogglesItAndAsksForADraw) {
  // Given a button that sends its press to the mark
  auto view = std::make_shared<CheckmarkView>(CGRectMake(0, 0, 24, 24));
  auto button = std::make_shared<UIButton>();
  button->addTarget(view, "onCheckmarkWithSender:", UIControlEvents::touchUpInside);
  int draws = 0;
  view->changed().observe([&] { ++draws; });

  // When pressed twice
  button->sendActionsForControlEvents(UIControlEvents::touchUpInside);
  bool afterFirst = view->isSelected();
  button->sendActionsForControlEvents(UIControlEvents::touchUpInside);

  // Then
  EXPECT_TRUE(afterFirst);
  EXPECT_FALSE(view->isSelected());
  EXPECT_EQ(draws, 2);
  EXPECT_FALSE(view->ismultiSelect());
}

}  // namespace
}  // namespace nimbrel
