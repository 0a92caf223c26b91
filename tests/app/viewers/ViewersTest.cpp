#include <gtest/gtest.h>

#include "app/SimTest.h"
#include "app/core/ApplicationMain.h"
#include "app/viewers/LivePreviewViewController.h"
#include "app/viewers/PreviewBuilder.h"
#include "app/viewers/PreviewTitleBuilder.h"
#include "app/viewers/VideoPreviewViewController.h"
#include "platform/photos/PHAsset.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UINavigationController.h"

namespace nimbrel {
namespace {

constexpr const char* kLibrary = R"({"now": "2026-11-22T10:00:00Z", "photos": {"assets": [
  {"id": "STILL/L0/001", "created": "2026-03-01T09:30:00Z", "width": 4000, "height": 3000},
  {"id": "LIVE/L0/001", "subtypes": 8, "width": 3000, "height": 4000, "created": "2026-03-01T09:30:00Z"},
  {"id": "LIVEHDR/L0/001", "subtypes": 10},
  {"id": "NOLOCALITY/L0/001", "created": "2026-03-01T09:30:00Z", "location": {"latitude": 1.0, "longitude": 2.0, "locality": null}},
  {"id": "PLACENODATE/L0/001", "created": null, "location": {"latitude": 38.72, "longitude": -9.14, "locality": "Lisbon"}},
  {"id": "NOTHING/L0/001", "created": null},
  {"id": "MOVIE/L0/001", "mediaType": 2, "duration": 12.0, "created": "2026-03-02T10:00:00Z"},
  {"id": "COMPOSED/L0/001", "mediaType": 2, "duration": 5.0, "video": "composition"}]}})";

class ViewersTest : public testing::SimTest {
 protected:
  void SetUp() override {
    launchToHome(kLibrary);
  }
  std::shared_ptr<PreviewViewController> show(const std::string& id) {
    auto viewer = PreviewBuilder::build(asset(id));
    nav()->pushViewController(viewer, true);
    settle();
    return viewer;
  }
};

TEST_F(ViewersTest, TheBuilderPicksTheViewerByTypeAndExactSubtype) {
  EXPECT_STREQ(PreviewBuilder::build(asset("STILL/L0/001"))->className(), "PreviewViewController");
  EXPECT_STREQ(PreviewBuilder::build(asset("LIVE/L0/001"))->className(), "LivePreviewViewController");
  EXPECT_STREQ(PreviewBuilder::build(asset("LIVEHDR/L0/001"))->className(), "PreviewViewController")
      << "a live photo with another subtype bit opens as a still";
  EXPECT_STREQ(PreviewBuilder::build(asset("MOVIE/L0/001"))->className(), "VideoPreviewViewController");
}


TEST_F(ViewersTest, OnlyPresentationStyleZeroTurnsBlackInFullScreen) {
  const std::pair<UIModalPresentationStyle, UIColor> rows[] = {
      {UIModalPresentationStyle::fullScreen, UIColor::blackColor()},
      {UIModalPresentationStyle::overFullScreen, UIColor::whiteColor()},
      {UIModalPresentationStyle::pageSheet, UIColor::whiteColor()}};
  for (const auto& [style, expected] : rows) {
    auto viewer = PreviewBuilder::build(asset("STILL/L0/001"));
    viewer->setModalPresentationStyle(style);
    nav()->presentViewController(viewer, false, nullptr);
    settle();
    viewer->setFullscreen(true);
    settle();
    EXPECT_EQ(viewer->view()->backgroundColor(), expected) << static_cast<int>(style);
    viewer->setFullscreen(false);
    settle();
    EXPECT_EQ(viewer->view()->backgroundColor(), UIColor::whiteColor());
    nav()->dismissViewControllerAnimated(false, nullptr);
    settle();
  }
}

// The double tap's zoom, its centring offset, full screen and the single tap's wait are the e2e
// viewer_gestures scenario's; a pushed viewer's black background is viewer_background_in_full_screen's.
// The still at full size is the e2e images_viewer_favourite_share_delete scenario's.
TEST_F(ViewersTest, ZoomIsBetweenOneAndThreeAndADoubleTapBackToOneLeavesNoZoomedOffset) {
  auto viewer = show("STILL/L0/001");
  EXPECT_EQ(viewer->scrollView->minimumZoomScale(), 1.0);
  EXPECT_EQ(viewer->scrollView->maximumZoomScale(), 3.0);
  viewer->scrollView->setZoomScale(5.0);
  EXPECT_EQ(viewer->scrollView->zoomScale(), 3.0);
  viewer->scrollView->setZoomScale(0.2);
  EXPECT_EQ(viewer->scrollView->zoomScale(), 1.0);
  viewer->doubleTapRecognizer->recognize(UIGestureRecognizerState::ended, {100, 200});
  settle();
  viewer->doubleTapRecognizer->recognize(UIGestureRecognizerState::ended, {100, 200});
  settle();
  EXPECT_EQ(viewer->scrollView->zoomScale(), 1.0);
  EXPECT_EQ(viewer->scrollView->contentInset(), UIEdgeInsets{});
  EXPECT_EQ(viewer->scrollView->contentOffset(), (CGPoint{0, 0})) << "the zoomed offset does not outlive the zoom";
}

TEST_F(ViewersTest, LeavingTheViewerHidesTheBarAndResetsFullScreen) {
  auto viewer = show("STILL/L0/001");
  viewer->setFullscreen(true);
  viewer->setFullscreen(false);
  EXPECT_FALSE(nav()->isNavigationBarHidden()) << "leaving full screen shows the bar";
  nav()->popViewControllerAnimated(true);
  settle();
  EXPECT_TRUE(nav()->isNavigationBarHidden());

  auto zoomed = show("STILL/L0/001");
  zoomed->setFullscreen(true);
  nav()->popViewControllerAnimated(true);
  settle();
  EXPECT_FALSE(zoomed->fullscreen());
  EXPECT_FALSE(nav()->isNavigationBarHidden()) << "resetting full screen afterwards brings the bar back";
}

// A place with its date is the e2e images_viewer_favourite_share_delete scenario's.
TEST_F(ViewersTest, TitlesFallBackFromPlaceToDateToNothing) {
  auto title = [&](const std::string& id) -> std::optional<std::string> {
    std::optional<std::string> got;
    PreviewTitleBuilder::build(asset(id), [&](NSAttributedString t) { got = t.string(); });
    settle();
    return got;
  };
  EXPECT_EQ(title("NOLOCALITY/L0/001"), "March 1, 2026\n9:30\u202FAM") << "a placemark without locality";
  EXPECT_EQ(title("STILL/L0/001"), "March 1, 2026\n9:30\u202FAM") << "no location at all";
  EXPECT_EQ(title("PLACENODATE/L0/001"), "Lisbon") << "a place without a date is one line";
  EXPECT_FALSE(title("NOTHING/L0/001"));
  auto dated = PreviewTitleBuilder::dateTitle(Date{0});
  ASSERT_EQ(dated.runs.size(), 2u);
  EXPECT_EQ(dated.runs[0].font.pointSize, 16);
  EXPECT_EQ(dated.runs[1].font.pointSize, 12);
}

TEST_F(ViewersTest, TheLiveBadgeSitsAtTheFittedPicturesCorner) {
  auto viewer = std::dynamic_pointer_cast<LivePreviewViewController>(show("LIVE/L0/001"));
  ASSERT_TRUE(viewer);
  ASSERT_TRUE(viewer->livePhotoView->livePhoto());
  EXPECT_TRUE(viewer->imageView->isHidden()) << "the still serves until the viewer is on screen";
  double W = viewer->livePhotoView->frame().width(), H = viewer->livePhotoView->frame().height();
  double q = std::max(4000.0 / H, 3000.0 / W);
  EXPECT_EQ(viewer->badgeView->frame().origin, (CGPoint{(W - 3000.0 / q) * 0.5, (H - 4000.0 / q) * 0.5}));
  viewer->setFullscreen(true);
  EXPECT_EQ(viewer->badgeView->alpha(), 0.0);
  viewer->setFullscreen(true);
  EXPECT_EQ(viewer->badgeView->alpha(), 0.0) << "set again without a change, it still fades";
  viewer->setFullscreen(false);
  EXPECT_EQ(viewer->badgeView->alpha(), 1.0);
}

TEST_F(ViewersTest, TheVideoPlaysToItsEndAndStopsAtZeroWithThePlayButtonAndLeavingPausesIt) {
  auto viewer = std::dynamic_pointer_cast<VideoPreviewViewController>(show("MOVIE/L0/001"));
  ASSERT_TRUE(viewer);
  ASSERT_TRUE(viewer->player());
  EXPECT_TRUE(viewer->player()->isPlaying()) << "playback starts by itself";
  EXPECT_EQ(viewer->navigationItem().rightBarButtonItem(), viewer->pauseBarButton);
  EXPECT_FALSE(viewer->playerView->isHidden());
  EXPECT_FALSE(viewer->doubleTapRecognizer->isEnabled()) << "no zoom on video";
  advance(12.5);
  EXPECT_FALSE(viewer->player()->isPlaying());
  EXPECT_EQ(viewer->player()->currentTime(), 0.0);
  EXPECT_EQ(viewer->navigationItem().rightBarButtonItem(), viewer->playBarButton);
  viewer->playBarButton->press();
  EXPECT_TRUE(viewer->player()->isPlaying());
  advance(3);
  EXPECT_NEAR(viewer->player()->currentTime(), 3.0, 1e-6);

  // Leaving pauses it and forgets the end of playback.
  viewer->setFullscreen(true);
  nav()->popViewControllerAnimated(true);
  settle();
  EXPECT_FALSE(viewer->player()->isPlaying());
  EXPECT_EQ(viewer->navigationItem().rightBarButtonItem(), viewer->playBarButton);
  EXPECT_TRUE(viewer->fullscreen()) << "the base's disappearance does not run for the video viewer";
  EXPECT_TRUE(nav()->isNavigationBarHidden()) << "the bar stays as full screen left it";
  viewer->player()->play();
  viewer->navigationItem().setRightBarButtonItem(viewer->pauseBarButton, false);
  advance(20);
  EXPECT_EQ(viewer->navigationItem().rightBarButtonItem(), viewer->pauseBarButton)
      << "no observer is left to reset the buttons";
}

TEST_F(ViewersTest, AVideoThatIsNoFileHasNoPlayerAndNoButton) {
  auto viewer = std::dynamic_pointer_cast<VideoPreviewViewController>(show("COMPOSED/L0/001"));
  EXPECT_FALSE(viewer->player());
  EXPECT_FALSE(viewer->navigationItem().rightBarButtonItem());
  viewer->setAsset(asset("STILL/L0/001"));
  EXPECT_FALSE(viewer->player()) << "a non-video clears the player";
}

}  // namespace
}  // namespace nimbrel
