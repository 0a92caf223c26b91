// The viewers' scenes in a real window (offscreen): clicks, double clicks, the wheel and drags
// reach the platform's recognisers and scroll view, and what is drawn follows the platform.
#include "SceneTest.h"

Q_IMPORT_QML_PLUGIN(Nimbrel_ShellPlugin)

namespace nimbrel::shell {
namespace {

constexpr const char* kFixture = R"({"now": "2026-11-22T10:00:00Z", "locale": "en_US", "timeZone": "Europe/Lisbon",
  "photos": {"assets": [
    {"id": "STILL/L0/001", "created": "2026-03-01T09:30:00Z", "width": 4032, "height": 3024, "filename": "IMG_0001.JPG", "fileSize": 1000000},
    {"id": "LIVE/L0/001", "subtypes": 8, "created": "2026-03-02T09:30:00Z", "width": 3024, "height": 4032, "filename": "IMG_0002.HEIC", "fileSize": 1000000},
    {"id": "MOVIE/L0/001", "mediaType": 2, "duration": 12.5, "created": "2026-03-03T10:00:00Z", "width": 1920, "height": 1080, "filename": "VID_0003.MOV", "fileSize": 2000000}]}})";

class ViewerSceneTest : public SceneTest {
 protected:
  void start(QSize size) { SceneTest::start(size, kFixture); }
};

TEST_F(ViewerSceneTest, ADoubleClickZoomsAroundThePointAndCancelsItsFirstClicksSingleTap) {
  start({390, 844});
  auto viewer = open("STILL/L0/001");
  QQuickItem* still = item("still");
  ASSERT_TRUE(still && still->isVisible());
  EXPECT_NEAR(still->width(), 390, 0.5);

  QTest::mouseDClick(window_, Qt::LeftButton, Qt::NoModifier, QPoint(100, 200));
  wait(0.6);
  EXPECT_NEAR(viewer->scrollView->zoomScale(), 2.0, 1e-9);
  // The platform's rectangle around the point: half the view, centred on it, zoomed to fill.
  EXPECT_EQ(viewer->scrollView->contentOffset(), (CGPoint{(100 - 390 / 4.0) * 2, (200 - 844 / 4.0) * 2}));
  EXPECT_TRUE(viewer->fullscreen()) << "zooming entered full screen; a single tap would have left it";

  // Drawn at the platform's zoom, where the scroll view shows its content.
  const CGPoint shown = shownContentOffset(*viewer->scrollView);
  EXPECT_EQ(shown, (CGPoint{5, 422})) << "the negative insets keep the 4:3 picture in the middle";
  const QPointF topLeft = still->mapToScene(QPointF(0, 0));
  EXPECT_NEAR(still->width(), viewer->imageView->frame().width(), 0.5);
  EXPECT_NEAR(still->height(), viewer->imageView->frame().height(), 0.5);
  EXPECT_NEAR(topLeft.x(), viewer->imageView->frame().minX() - shown.x, 0.5);
  EXPECT_NEAR(topLeft.y(), viewer->imageView->frame().minY() - shown.y, 0.5);

  QTest::mouseDClick(window_, Qt::LeftButton, Qt::NoModifier, QPoint(200, 300));
  wait(0.6);
  EXPECT_EQ(viewer->scrollView->zoomScale(), 1.0);
  EXPECT_NEAR(still->width(), 390, 0.5);
  EXPECT_NEAR(still->mapToScene(QPointF(0, 0)).y(), 0, 0.5);
}

TEST_F(ViewerSceneTest, AClickIsASingleTapAfterTheWaitAndTheBarFollowsTheStack) {
  start({390, 844});
  auto viewer = open("STILL/L0/001");
  QQuickItem* bar = item("navigationBar");
  ASSERT_TRUE(bar);
  EXPECT_FALSE(bar->isVisible()) << "the stack starts with its bar hidden";
  EXPECT_FALSE(bridge_->back()) << "no bar, no back button";

  click({200, 400});
  wait(0.1);
  EXPECT_FALSE(viewer->fullscreen()) << "the single tap waits for a second click";
  wait(0.4);
  EXPECT_TRUE(viewer->fullscreen());
  EXPECT_TRUE(viewer->prefersStatusBarHidden());
  QQuickItem* clock = item("statusClock");
  ASSERT_TRUE(clock);
  wait(0.35);
  EXPECT_LT(clock->mapToScene(QPointF(0, clock->height())).y(), 1) << "the status bar is folded away";

  click({200, 400});
  wait(0.8);
  EXPECT_FALSE(viewer->fullscreen());
  EXPECT_FALSE(nav()->isNavigationBarHidden());
  EXPECT_TRUE(bar->isVisible());
  EXPECT_NEAR(bar->mapToScene(QPointF(0, 0)).y(), 24.0, 0.5) << "the bar sits under the status bar";
  QQuickItem* title = item("titleView");
  ASSERT_TRUE(title);
  const QString html = title->property("text").toString();
  EXPECT_TRUE(html.contains("font-size:16px")) << html.toStdString();
  EXPECT_TRUE(html.contains("font-size:12px")) << html.toStdString();
  EXPECT_TRUE(html.contains("<br/>"));
  screenshot(QStringLiteral("viewer-bar-phone"));

  QTest::keyClick(window_, Qt::Key_Escape);
  wait(0.6);
  EXPECT_EQ(nav()->viewControllers().size(), 1u) << "Escape is the bar's back button";
}

TEST_F(ViewerSceneTest, CtrlWheelZoomsWithinTheLimitsAndADragPansTheZoomedPicture) {
  start({390, 844});
  auto viewer = open("STILL/L0/001");
  wheel({195, 422}, 120, Qt::NoModifier);
  EXPECT_EQ(viewer->scrollView->zoomScale(), 1.0) << "a plain wheel does not zoom";
  wheel({195, 422}, 120, Qt::ControlModifier);
  EXPECT_NEAR(viewer->scrollView->zoomScale(), std::pow(1.0016, 120), 1e-9);
  for (int i = 0; i < 12; ++i) wheel({195, 422}, 120, Qt::ControlModifier);
  EXPECT_EQ(viewer->scrollView->zoomScale(), 3.0) << "the platform's maximum";
  wait(0.45);
  ASSERT_TRUE(viewer->fullscreen());

  const CGPoint before = shownContentOffset(*viewer->scrollView);
  QTest::mousePress(window_, Qt::LeftButton, Qt::NoModifier, QPoint(200, 400));
  QTest::mouseMove(window_, QPoint(180, 360));
  QTest::mouseMove(window_, QPoint(150, 300));
  QTest::mouseRelease(window_, Qt::LeftButton, Qt::NoModifier, QPoint(150, 300));
  loop_->settle();
  const CGPoint expected = clampContentOffset(*viewer->scrollView, {before.x + 50, before.y + 100});
  EXPECT_EQ(viewer->scrollView->contentOffset(), expected);
  EXPECT_NE(expected, before) << "the drag moved the picture";
  wait(0.5);
  EXPECT_TRUE(viewer->fullscreen()) << "a drag is no tap";
}


class VideoViewerTest : public ViewerSceneTest, public ::testing::WithParamInterface<QSize> {};

TEST_P(VideoViewerTest, TheRightButtonPausesAndPlays) {
  const QSize size = GetParam();
  const QString form = size.width() >= 700 ? QStringLiteral("pad") : QStringLiteral("phone");
  start(size);
  auto viewer = open<VideoPreviewViewController>("MOVIE/L0/001");
  ASSERT_TRUE(viewer);
  ASSERT_TRUE(viewer->player());
  EXPECT_TRUE(viewer->player()->isPlaying());
  QQuickItem* layer = item("playerLayer");
  ASSERT_TRUE(layer && layer->isVisible());
  // Two taps: into full screen and out again, which shows the bar.
  click({size.width() / 2, size.height() / 2});
  wait(0.5);
  click({size.width() / 2, size.height() / 2});
  wait(0.8);
  ASSERT_FALSE(nav()->isNavigationBarHidden());
  QQuickItem* right = item("rightBarButton");
  ASSERT_TRUE(right && right->isVisible());
  EXPECT_EQ(viewer->navigationItem().rightBarButtonItem(), viewer->pauseBarButton);
  screenshot(QStringLiteral("video-viewer-") + form);
  click(centreOf(right));
  loop_->settle();
  EXPECT_FALSE(viewer->player()->isPlaying());
  EXPECT_EQ(viewer->navigationItem().rightBarButtonItem(), viewer->playBarButton);
  wait(0.35);
  screenshot(QStringLiteral("video-viewer-paused-") + form);
  click(centreOf(right));
  loop_->settle();
  EXPECT_TRUE(viewer->player()->isPlaying());
}

INSTANTIATE_TEST_SUITE_P(Forms, VideoViewerTest, ::testing::Values(QSize(390, 844), QSize(1024, 1366)));

TEST_F(ViewerSceneTest, TheLiveBadgeSitsAtItsFrameAndFadesInFullScreen) {
  start({390, 844});
  auto viewer = open<LivePreviewViewController>("LIVE/L0/001");
  ASSERT_TRUE(viewer);
  QQuickItem* photo = item("livePhoto");
  ASSERT_TRUE(photo && photo->isVisible());
  EXPECT_NEAR(photo->width(), 390, 0.5) << "the platform made the view before it had a size; the window gives it one";
  EXPECT_NEAR(photo->height(), 844, 0.5);
  QQuickItem* badge = item("liveBadge");
  ASSERT_TRUE(badge && badge->isVisible());
  const QPointF at = badge->mapToScene(QPointF(0, 0));
  EXPECT_NEAR(at.x(), viewer->badgeView->frame().minX(), 0.5);
  EXPECT_NEAR(at.y(), viewer->badgeView->frame().minY(), 0.5);
  EXPECT_NEAR(at.y(), (844 - 4032 * 390.0 / 3024) / 2, 0.5) << "at the top of the fitted 3:4 picture";
  EXPECT_NEAR(badge->opacity(), 1.0, 1e-6);
  click({195, 422});
  wait(0.9);
  EXPECT_EQ(viewer->badgeView->alpha(), 0.0);
  EXPECT_NEAR(badge->opacity(), 0.0, 1e-6);
}

TEST_F(ViewerSceneTest, TheSystemPlayersControlsActOnItsPlayer) {
  start({390, 844});
  auto player = AVPlayer::playerWithURL(URL::fileURLWithPath(platform_->home() + "/PhotoLibrary/VID_0003.MOV"));
  auto controller = std::make_shared<AVPlayerViewController>();
  controller->player = player;
  home_->presentViewController(controller, true, [player] { player->play(); });
  wait(0.6);
  ASSERT_EQ(presented(), controller);
  ASSERT_EQ(player->currentItem()->durationSeconds(), 12.5);
  ASSERT_TRUE(player->isPlaying());
  QQuickItem* playPause = item("playerPlayPause");
  ASSERT_TRUE(playPause);
  QQuickItem* caption = item("playerCaption");
  QQuickItem* controls = item("playerControls");
  ASSERT_TRUE(caption && controls);
  EXPECT_FALSE(sceneRect(caption).intersects(sceneRect(playPause))) << "the file's name stays clear of the button";
  EXPECT_FALSE(sceneRect(caption).intersects(sceneRect(controls)));
  click(centreOf(playPause));
  loop_->settle();
  EXPECT_FALSE(player->isPlaying());

  QQuickItem* track = item("playerTrack");
  ASSERT_TRUE(track);
  click(track->mapToScene(QPointF(track->width() / 2, track->height() / 2)).toPoint());
  loop_->settle();
  EXPECT_NEAR(player->currentTime(), 12.5 / 2, 12.5 / track->width() + 0.01);
  wait(0.3);
  QQuickItem* elapsed = item("playerElapsed");
  ASSERT_TRUE(elapsed);
  EXPECT_EQ(elapsed->property("text").toString(), PlayerObject::timeText(player->currentTime()));

  click(centreOf(playPause));
  loop_->settle();
  EXPECT_TRUE(player->isPlaying());
  click(centreOf(item("playerClose")));
  wait(0.6);
  EXPECT_FALSE(presented());
}

TEST_F(ViewerSceneTest, APanelSpringsInWhenItsPulseIsRecordedAndATouchBesideTheCardLeaves) {
  start({390, 844});
  auto info = std::dynamic_pointer_cast<InfoViewController>(
      UIStoryboard::storyboardWithName("Main").instantiateViewControllerWithIdentifier("InfoVC"));
  ASSERT_TRUE(info);
  info->asset = asset("STILL/L0/001");
  info->setModalPresentationStyle(UIModalPresentationStyle::overCurrentContext);
  home_->presentViewController(info, false, nullptr);
  loop_->settle();
  ASSERT_EQ(presented(), info);
  QQuickItem* stage = item("panelStage");
  ASSERT_TRUE(stage);
  double smallest = stage->scale();
  QObject::connect(stage, &QQuickItem::scaleChanged, stage, [&] { smallest = std::min(smallest, stage->scale()); });
  EXPECT_EQ(stage->scale(), 1.0) << "nothing moves before the record";
  wait(0.9);
  EXPECT_LT(smallest, 0.6) << "it started from the record's 0.5";
  EXPECT_NEAR(stage->scale(), 1.0, 1e-9);
  QQuickItem* card = item("panelCard");
  ASSERT_TRUE(card && card->isVisible());
  QQuickItem* name = item("value_lblFileName");
  ASSERT_TRUE(name);
  EXPECT_EQ(name->property("text").toString(), "IMG_0001.JPG");

  click(centreOf(card));
  wait(0.3);
  EXPECT_EQ(presented(), info) << "a touch on the card stays on it";
  click({10, 10});
  wait(0.5);
  EXPECT_FALSE(presented());
}

}  // namespace
}  // namespace nimbrel::shell
