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
  const std::pair<CGSize, CGRect> rows[] = {
      {{24, 24}, CGRectMake(3, 3, 18, 18)},
      {{30, 20}, CGRectMake(3, 3, 24, 14)},
      {{24.6, 24.4}, CGRectMake(3, 3, 19, 18)},  // right edge 21.6 and bottom 21.4 round to 22 and 21
      {{4, 4}, CGRectMake(3, 3, 0, 0)},          // too small for a disc: nothing, not a negative rect
  };
  for (const auto& [size, oval] : rows) {
    auto view = std::make_shared<CheckmarkView>(CGRect{{5, 5}, size});
    EXPECT_EQ(view->drawing().oval, oval) << size.width << " x " << size.height;
  }
}

TEST_F(CheckmarkViewTest, APressWiredToTheMarkTogglesItAsksForADrawAndTheColoursFollow) {
  AppThemeColor theme;
  auto view = std::make_shared<CheckmarkView>(CGRectMake(0, 0, 24, 24));
  EXPECT_EQ(view->backgroundColor(), UIColor::clearColor());
  auto button = std::make_shared<UIButton>();
  button->addTarget(view, "onCheckmarkWithSender:", UIControlEvents::touchUpInside);
  int draws = 0;
  view->changed().observe([&] { ++draws; });
  const std::tuple<bool, UIColor, UIColor, UIColor> rows[] = {
      {true, theme.selectionShadowColor(), theme.AppTheme(), UIColor::whiteColor()},
      {false, theme.unselectionShadowColor(), UIColor::whiteColor(), UIColor::clearColor()},
  };
  for (const auto& [selected, shadow, fill, stroke] : rows) {
    SCOPED_TRACE(selected);
    button->sendActionsForControlEvents(UIControlEvents::touchUpInside);
    ASSERT_EQ(view->isSelected(), selected);
    auto d = view->drawing();
    EXPECT_EQ(d.shadowColor, shadow);
    EXPECT_EQ(d.fillColor, fill);
    EXPECT_EQ(d.strokeColor, stroke);
  }
  EXPECT_EQ(draws, 2);
}

}  // namespace
}  // namespace nimbrel
