// The program's own overlay drawn in a real window at phone and pad size: each animation, the
// drawn icons, a still and the progress ring, with a screenshot of each.
#include "SceneTest.h"

#include "app/kit/ProgressHUD.h"
#include "platform/uikit/UserNotice.h"

namespace nimbrel::shell {
namespace {

class OverlaySceneTest : public SceneTest, public ::testing::WithParamInterface<QSize> {
 protected:
  QString form() const { return GetParam().width() >= 700 ? QStringLiteral("pad") : QStringLiteral("phone"); }
  // The card QML draws stands where the platform put it.
  void expectCardAtPlatformFrame() {
    auto* card = item("overlayCard");
    ASSERT_TRUE(card && card->isVisible());
    CGRect f = ProgressHUD::shared()->toolbarHUD->frame();
    EXPECT_NEAR(card->x(), f.minX(), 0.5);
    EXPECT_NEAR(card->width(), f.width(), 0.5);
  }
};

TEST_P(OverlaySceneTest, EveryFigureIsDrawnOnTheCard) {
  start(GetParam(), R"({"now": "2026-11-22T10:00:00Z"})");
  for (int type = 0; type <= static_cast<int>(AnimationType::circleStrokeSpin); ++type) {
    ProgressHUD::setAnimationType(static_cast<AnimationType>(type));
    ProgressHUD::show(type % 2 ? std::optional<std::string>("Loading") : std::nullopt, false);
    wait(0.4);
    expectCardAtPlatformFrame();
    screenshot(QStringLiteral("overlay-") + QString::fromStdString(animationTypeName(static_cast<AnimationType>(type))) +
               "-" + form());
  }
  ProgressHUD::showSucceed("Saved");
  wait(0.6);
  screenshot(QStringLiteral("overlay-succeed-") + form());
  ProgressHUD::show("Liked", AlertIcon::heart);
  wait(0.3);
  screenshot(QStringLiteral("overlay-heart-") + form());
  ProgressHUD::showProgress("Copying", 0.6);
  wait(0.3);
  expectCardAtPlatformFrame();
  screenshot(QStringLiteral("overlay-progress-") + form());
  ProgressHUD::dismiss();
  wait(0.5);
  EXPECT_FALSE(item("overlayCard") && item("overlayCard")->isVisible()) << "gone after the exit";
}

// The platform's own message (where a damaged file was kept) stands over the screens until closed.
TEST_P(OverlaySceneTest, ThePlatformsNoticeIsShownUntilItsCloseIsPressed) {
  start(GetParam(), R"({"now": "2026-11-22T10:00:00Z"})");
  UserNotice::post("The old file was kept as /home/me/.config/nimbrel/preferences.plist.unreadable-1");
  wait(0.1);
  auto* banner = item("noticeBanner");
  ASSERT_TRUE(banner && banner->isVisible());
  EXPECT_TRUE(sceneRect(banner).intersects(QRectF(0, 0, window_->width(), window_->height())));
  screenshot(QStringLiteral("notice-") + form());
  click(centreOf(item("noticeClose")));
  wait(0.1);
  EXPECT_FALSE(UserNotice::current());
  EXPECT_FALSE(banner->isVisible());
}

INSTANTIATE_TEST_SUITE_P(Forms, OverlaySceneTest, ::testing::Values(QSize(390, 844), QSize(1024, 1366)));

}  // namespace
}  // namespace nimbrel::shell
