#include <gtest/gtest.h>

#include <cmath>

#include "platform/PlatformState.h"
#include "platform/av/AVPlayer.h"
#include "platform/av/MediaDurations.h"
#include "platform/photos/PHLivePhoto.h"
#include "platform/uikit/UIGestureRecognizer.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UIScrollView.h"
#include "platform/uikit/UIViewController.h"
#include "shell/PlayerObject.h"
#include "shell/QtRunLoop.h"
#include "shell/Snapshot.h"
#include "shell/ViewObject.h"

namespace nimbrel::shell {
namespace {

class ViewerBridgeTest : public ::testing::Test {
 protected:
  ~ViewerBridgeTest() override {
    resetPlatformState();
    RunLoop::install(previous_);
  }
  QtRunLoop loop_{0.0};
  RunLoop* previous_ = RunLoop::install(&loop_);
};

// A scroll view whose zoom view is a plain view of the scroll view's size.
struct Zoomable : UIScrollViewDelegate {
  std::shared_ptr<UIView> zoomView = std::make_shared<UIView>(CGRect{{0, 0}, {400, 800}});
  std::shared_ptr<UIView> viewForZoomingInScrollView(UIScrollView&) override { return zoomView; }
};

std::shared_ptr<UIScrollView> zoomableScroll(const std::shared_ptr<Zoomable>& delegate) {
  auto scroll = std::make_shared<UIScrollView>(CGRect{{0, 0}, {400, 800}});
  scroll->setDelegate(delegate);
  scroll->setMinimumZoomScale(1);
  scroll->setMaximumZoomScale(3);
  scroll->addSubview(delegate->zoomView);
  return scroll;
}

TEST_F(ViewerBridgeTest, TheShownOffsetStaysInTheRangeTheContentAndInsetsAllow) {
  UIScrollView scroll(CGRect{{0, 0}, {390, 844}});
  EXPECT_EQ(shownContentOffset(scroll), (CGPoint{0, 0})) << "no content: nothing to move";
  scroll.setContentSize({780, 1688});
  scroll.setContentOffset({500, -30});
  EXPECT_EQ(shownContentOffset(scroll), (CGPoint{390, 0}));
  // A picture narrower than the zoomed view: the negative inset pins it in the middle.
  scroll.setContentInset({-422, 0, -422, 0});
  scroll.setContentOffset({120, 0});
  EXPECT_EQ(shownContentOffset(scroll), (CGPoint{120, 422}));
  scroll.setContentOffset({120, 900});
  EXPECT_EQ(shownContentOffset(scroll), (CGPoint{120, 422}));
  // A positive inset lets the content go past its edge by that much.
  scroll.setContentInset({0, 30, 0, 30});
  scroll.setContentOffset({-100, 0});
  EXPECT_EQ(shownContentOffset(scroll), (CGPoint{-30, 0}));
  QVariantMap s = snapshotOf(std::make_shared<UIScrollView>(scroll));
  EXPECT_DOUBLE_EQ(s["shownX"].toDouble(), -30);
  EXPECT_DOUBLE_EQ(s["contentInset"].toMap()["left"].toDouble(), 30);
  EXPECT_DOUBLE_EQ(s["contentX"].toDouble(), -100) << "the platform's own offset is reported as it is";
}

TEST_F(ViewerBridgeTest, ZoomingKeepsThePointUnderTheAnchorAndThePlatformKeepsItsLimits) {
  auto delegate = std::make_shared<Zoomable>();
  auto scroll = zoomableScroll(delegate);
  ViewObject view(scroll);
  view.zoomAt(2, 100, 200);
  EXPECT_DOUBLE_EQ(scroll->zoomScale(), 2);
  EXPECT_EQ(scroll->contentOffset(), (CGPoint{100, 200})) << "content point (100, 200) stays under the anchor";
  view.zoomAt(3, 0, 0);
  EXPECT_EQ(scroll->contentOffset(), (CGPoint{150, 300}));
  view.zoomAt(10, 50, 50);
  EXPECT_DOUBLE_EQ(scroll->zoomScale(), 3) << "no further than the maximum";
  view.zoomAt(0.2, 200, 400);
  EXPECT_DOUBLE_EQ(scroll->zoomScale(), 1);
  EXPECT_EQ(scroll->contentOffset(), (CGPoint{0, 0})) << "back at 1 the content cannot move";
  EXPECT_DOUBLE_EQ(view.state()["zoomScale"].toDouble(), 1);
}

TEST_F(ViewerBridgeTest, ADragMovesAZoomedPictureNoFurtherThanItsEdges) {
  auto delegate = std::make_shared<Zoomable>();
  auto scroll = zoomableScroll(delegate);
  ViewObject view(scroll);
  view.scrollTo(50, 50);
  EXPECT_EQ(scroll->contentOffset(), (CGPoint{0, 0})) << "unzoomed, nothing moves";
  scroll->setZoomScale(2);
  view.scrollTo(120, -40);
  EXPECT_EQ(scroll->contentOffset(), (CGPoint{120, 0}));
  view.scrollTo(5000, 5000);
  EXPECT_EQ(scroll->contentOffset(), (CGPoint{400, 800}));
}

TEST_F(ViewerBridgeTest, ATapGoesToItsRecogniserAndASingleTapWaitsForTheDouble) {
  auto controller = std::make_shared<UIViewController>();
  std::vector<std::pair<std::string, CGPoint>> taps;
  auto log = [&](const char* name) {
    return [&, name](const std::shared_ptr<NSObject>& sender) {
      auto r = std::dynamic_pointer_cast<UIGestureRecognizer>(sender);
      taps.emplace_back(name, r->locationInView(nullptr));
    };
  };
  controller->registerAction("single:", log("single"));
  controller->registerAction("double:", log("double"));
  auto single = std::make_shared<UITapGestureRecognizer>(controller, "single:");
  auto twice = std::make_shared<UITapGestureRecognizer>(controller, "double:");
  twice->numberOfTapsRequired = 2;
  single->requireGestureRecognizerToFail(twice);
  auto root = std::make_shared<UIView>(CGRect{{0, 0}, {390, 844}});
  root->addGestureRecognizer(single);
  root->addGestureRecognizer(twice);
  ViewObject singleView(single), doubleView(twice);
  EXPECT_EQ(doubleView.state()["taps"].toInt(), 2);

  EXPECT_TRUE(singleView.recognize(10, 20));
  loop_.settle();
  EXPECT_TRUE(taps.empty()) << "the single tap waits to learn that no second one follows";
  loop_.runFor(UIGestureRecognizer::kDoubleTapWait + 0.1);
  loop_.settle();
  ASSERT_EQ(taps.size(), 1u);
  EXPECT_EQ(taps[0].first, "single");
  EXPECT_EQ(taps[0].second, (CGPoint{10, 20}));

  // A double click: its first click is a single tap, which the double then cancels.
  taps.clear();
  singleView.recognize(30, 40);
  doubleView.recognize(30, 40);
  loop_.runFor(UIGestureRecognizer::kDoubleTapWait + 0.1);
  loop_.settle();
  ASSERT_EQ(taps.size(), 1u);
  EXPECT_EQ(taps[0].first, "double");
  EXPECT_EQ(taps[0].second, (CGPoint{30, 40}));

  twice->setEnabled(false);
  EXPECT_FALSE(doubleView.recognize(1, 1)) << "a disabled recogniser takes no touch";
  ViewObject label(std::make_shared<UILabel>());
  EXPECT_FALSE(label.recognize(1, 1));
}

// The title's runs and a view's animation records reach the window in ViewerSceneTest.
TEST_F(ViewerBridgeTest, TheLivePhotoAndItsBadgeAreRead) {
  auto live = std::make_shared<PHLivePhotoView>();
  EXPECT_EQ(snapshotOf(live)["image"].toString(), "");
  live->setLivePhoto(std::make_shared<PHLivePhoto>(CGSize{3024, 4032}, "/library/IMG_9.HEIC"));
  QVariantMap s = snapshotOf(live);
  EXPECT_TRUE(s["image"].toString().startsWith("image://nimbrel/file/3024x4032/")) << s["image"].toString().toStdString();
  EXPECT_DOUBLE_EQ(s["pictureHeight"].toDouble(), 4032);
  auto badge = std::make_shared<UIImageView>();
  badge->setImage(PHLivePhotoView::livePhotoBadgeImageWithOptions(1));
  EXPECT_EQ(snapshotOf(badge)["image"].toString(), "image://nimbrel/asset/live_badge");
}

// Media lengths by path, as a fixture would give them.
struct Lengths : MediaDurations {
  double durationOfFile(const std::string& path) const override {
    return path.find("short") != std::string::npos ? 0.4 : path.find("broken") != std::string::npos ? std::nan("") : 12.5;
  }
};

TEST_F(ViewerBridgeTest, APlayerObjectFollowsThePlayerOnTheRunLoopsClock) {
  MediaDurations::install(std::make_shared<Lengths>());
  auto player = AVPlayer::playerWithURL(URL::fileURLWithPath("/movies/VID_0019.MOV"));
  PlayerObject object(player);
  EXPECT_EQ(object.fileName(), "VID_0019.MOV");
  EXPECT_DOUBLE_EQ(object.duration(), 12.5);
  EXPECT_FALSE(object.playing());
  object.play();
  EXPECT_TRUE(player->isPlaying());
  EXPECT_TRUE(object.playing());
  loop_.runFor(0.35);
  EXPECT_GT(object.position(), 0.15) << "read again while it plays";
  EXPECT_LT(object.position(), 1.0);
  object.pause();
  double stopped = object.position();
  loop_.runFor(0.3);
  EXPECT_DOUBLE_EQ(object.position(), stopped);
  object.seek(6);
  EXPECT_DOUBLE_EQ(player->currentTime(), 6);
  EXPECT_DOUBLE_EQ(object.position(), 6);

  // Played elsewhere (the screen's own button), to its end: the object sees it stop.
  auto shortPlayer = AVPlayer::playerWithURL(URL::fileURLWithPath("/movies/short.MOV"));
  PlayerObject shortObject(shortPlayer);
  shortPlayer->play();
  loop_.runFor(0.35);
  EXPECT_TRUE(shortObject.playing());
  loop_.runFor(0.45);
  loop_.settle();
  loop_.runFor(0.3);
  EXPECT_FALSE(shortObject.playing());
  EXPECT_DOUBLE_EQ(shortObject.position(), 0.4);

  PlayerObject broken(AVPlayer::playerWithURL(URL::fileURLWithPath("/movies/broken.MOV")));
  EXPECT_DOUBLE_EQ(broken.duration(), -1);
  MediaDurations::install(nullptr);
}

TEST_F(ViewerBridgeTest, TimesReadAsThePlayersLabels) {
  EXPECT_EQ(PlayerObject::timeText(0), "0:00");
  EXPECT_EQ(PlayerObject::timeText(65.9), "1:05");
  EXPECT_EQ(PlayerObject::timeText(-7.2), "-0:07");
  EXPECT_EQ(PlayerObject::timeText(3725), "1:02:05");
  EXPECT_EQ(PlayerObject::timeText(std::nan("")), "--:--");
}

}  // namespace
}  // namespace nimbrel::shell
