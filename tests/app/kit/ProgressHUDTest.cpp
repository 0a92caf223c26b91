#include "app/kit/ProgressHUD.h"

#include <gtest/gtest.h>

#include "app/SimTest.h"
#include "app/kit/AppThemeColor.h"
#include "platform/uikit/TextMeasurer.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIWindow.h"

namespace nimbrel {
namespace {

class ProgressHUDTest : public testing::SimTest {
 protected:
  void SetUp() override { launchToHome(); }
  std::shared_ptr<ProgressHUD> hud() { return ProgressHUD::shared(); }
  bool shown() { return hud()->alpha() == 1.0 && hud()->viewBackground; }
  CGPoint cardCentre() {
    CGRect f = hud()->toolbarHUD->frame();
    return {f.minX() + f.width() / 2, f.minY() + f.height() / 2};
  }
};

TEST_F(ProgressHUDTest, ASelfHidingShowStandsThreeHundredthsOfASecondACharacterOverOneAndAQuarter) {
  EXPECT_DOUBLE_EQ(ProgressHUD::hideDelay(""), 1.25);
  EXPECT_DOUBLE_EQ(ProgressHUD::hideDelay("0123456789"), 1.55);
  ProgressHUD::showSucceed("0123456789");
  EXPECT_FALSE(shown()) << "every operation hops to the main queue first";
  settle();
  ASSERT_TRUE(shown());
  EXPECT_NEAR(hud()->toolbarHUD->transformScale(), 1 / 1.4, 1e-12) << "the entrance rests at 1/1.4";
  advance(1.54);
  EXPECT_TRUE(shown());
  advance(0.02);
  EXPECT_EQ(hud()->toolbarHUD->transformScale(), 0.3) << "the exit has begun";
  EXPECT_EQ(hud()->toolbarHUD->alpha(), 0.0);
  advance(0.15);
  EXPECT_FALSE(hud()->viewBackground);
  EXPECT_FALSE(hud()->labelStatus);
  EXPECT_EQ(hud()->alpha(), 0.0);
}

TEST_F(ProgressHUDTest, AShowWhileShownReplacesTheContentAndRestartsTheTimer) {
  ProgressHUD::show("wait", AlertIcon::heart);
  settle();
  ASSERT_TRUE(hud()->staticImageView);
  EXPECT_EQ(hud()->staticImageView->image()->name(), "heart.fill");
  advance(1.0);
  ProgressHUD::showAdded("0123456789");
  settle();
  EXPECT_FALSE(hud()->staticImageView->superview()) << "one content view at a time";
  EXPECT_EQ(hud()->viewAnimatedIcon->figure(), "added");
  advance(0.5);
  EXPECT_TRUE(shown()) << "the first timer (1.37 s) was cancelled";
  advance(1.3);
  EXPECT_FALSE(hud()->viewBackground);
  ProgressHUD::showProgress("copying", 0.25);
  settle();
  advance(10);
  EXPECT_TRUE(shown()) << "progress does not hide by itself";
  EXPECT_EQ(hud()->viewProgress->progress(), 0.25);
}

TEST_F(ProgressHUDTest, TheCardFitsItsTextAndTheContentSitsAboveIt) {
  ProgressHUD::show();
  settle();
  EXPECT_EQ(hud()->toolbarHUD->frame().size, (CGSize{120, 120}));
  EXPECT_TRUE(hud()->labelStatus->isHidden());
  CGRect content = hud()->viewAnimation->frame();
  EXPECT_EQ(content.minX() + 30, 60);
  EXPECT_EQ(content.minY() + 30, 60);
  EXPECT_EQ(hud()->viewAnimation->figure(), "systemActivityIndicator");

  std::string text = "Copying the selected documents to the folder";
  ProgressHUD::show(text);
  settle();
  CGSize line = TextMeasurer::current().measure(text, ProgressHUD::fontStatus());
  CGRect card = hud()->toolbarHUD->frame();
  EXPECT_EQ(card.width(), std::max(std::ceil(std::min(line.width, 250.0)) + 60.0, 120.0));
  EXPECT_GT(card.height(), 120 + line.height) << "the text wraps inside 250 points";
  EXPECT_EQ(hud()->viewAnimation->frame().minY() + 30, 55);
}

// The loading overlay blocks the window and shows the brand-coloured spinner, with interaction on.
TEST_F(ProgressHUDTest, InteractionDecidesWhetherTheBackdropTakesTouchesAndTheLoadingOverlayBlocksTheWindow) {
  ProgressHUD::show("busy", false);
  settle();
  EXPECT_TRUE(hud()->viewBackground->isUserInteractionEnabled());
  EXPECT_EQ(hud()->viewBackground->backgroundColor(), UIColor::rgba(0, 0, 0, 0.2));
  loadingOverlay();
  settle();
  EXPECT_FALSE(UIApplication::sharedApplication().keyWindow()->isUserInteractionEnabled());
  EXPECT_EQ(hud()->viewAnimation->color(), AppThemeColor().AppTheme());
  EXPECT_FALSE(hud()->viewBackground->isUserInteractionEnabled());
  EXPECT_EQ(hud()->viewBackground->backgroundColor(), UIColor::clearColor());
}

TEST_F(ProgressHUDTest, AnOpenKeyboardLiftsTheCardByHalfItsHeight) {
  ProgressHUD::show("typing");
  settle();
  CGRect screen = UIApplication::sharedApplication().windows().front()->bounds();
  EXPECT_EQ(cardCentre().y, screen.height() / 2);
  NSNotification show{UIKeyboardWillShowNotification, nullptr, {}};
  show.userInfo[UIKeyboardFrameEndUserInfoKey] = CGRectMake(0, 544, 390, 300);
  show.userInfo[UIKeyboardAnimationDurationUserInfoKey] = 0.25;
  NSNotificationCenter::defaultCenter().postNotification(show);
  EXPECT_EQ(cardCentre().y, (screen.height() - 300) / 2);
  NSNotificationCenter::defaultCenter().postNotification({UIDeviceOrientationDidChangeNotification, nullptr, {}});
  EXPECT_EQ(cardCentre().y, screen.height() / 2) << "no keyboard window: the searched height is 0";
  ProgressHUD::remove();
  settle();
  EXPECT_EQ(NSNotificationCenter::defaultCenter().observationCount(hud().get()), 0u);
}

}  // namespace
}  // namespace nimbrel
