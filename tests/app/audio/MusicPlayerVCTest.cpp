#include "app/audio/MusicPlayerVC.h"

#include <gtest/gtest.h>

#include "app/SimTest.h"
#include "app/VC/UIViewControllerExtension.h"
#include "platform/mediaplayer/MPMediaQuery.h"

namespace nimbrel {
namespace {

class MusicPlayerVCTest : public testing::SimTest {
 protected:
  // The player presented over home for song `id` of a one-song library.
  std::shared_ptr<MusicPlayerVC> play(const std::string& song) {
    launchToHome(R"({"music": {"songs": [)" + song + "]}}");
    auto player = instantiate<MusicPlayerVC>(AppStoryboard::Main);
    player->song = MPMediaQuery::songsQuery()->items()->front();
    nav()->presentViewController(player, true, nullptr);
    settle();
    return player;
  }
  std::string shown(const MusicPlayerVC& s) { return *s.lblTime->text() + " / " + *s.lblTotalTime->text(); }
};

TEST_F(MusicPlayerVCTest, TimeTextsGainAnHourFieldAtTheHourEitherSide) {
  const std::pair<long, const char*> rows[] = {
      {0, "00:00"}, {59, "00:59"}, {60, "01:00"}, {3599, "59:59"}, {3600, "01:00:00"}, {-3599, "-59:-59"},
      {-3600, "-01:00:00"}, {90061, "25:01:01"}};
  for (const auto& [seconds, text] : rows) EXPECT_EQ(MusicPlayerVC::timeText(seconds), text) << seconds;
}

TEST_F(MusicPlayerVCTest, TheCounterTicksOnItsOwnClockAndWrapsAtTheEnd) {
  auto screen = play(R"({"persistentID": "7", "title": "Blue", "artist": "Ana", "duration": 59.9})");
  EXPECT_EQ(screen->TotalSeconds, 59) << "cut, not rounded";
  EXPECT_EQ(screen->sliderOutlet->maximumValue(), 59.0f);
  EXPECT_EQ(shown(*screen), "00:00 / 00:00") << "the storyboard's texts stand until the first tick";
  EXPECT_TRUE(screen->player->isPlaying());
  advance(1);
  EXPECT_EQ(shown(*screen), "00:01 / 00:59");
  advance(57);
  EXPECT_EQ(shown(*screen), "00:58 / 00:59");
  EXPECT_EQ(screen->sliderOutlet->value(), 58.0f);
  advance(1);
  EXPECT_EQ(shown(*screen), "00:00 / 00:59") << "59 is the total, so the counter wraps";
  advance(1);
  EXPECT_EQ(screen->currentTime, 1);
  EXPECT_FALSE(screen->player->isPlaying()) << "the sound stopped at the end; nothing listens for it";
}

TEST_F(MusicPlayerVCTest, JumpsStopAtBothEndsAndKeepThePausedState) {
  auto screen = play(R"({"persistentID": "7", "duration": 120, "title": null, "artist": null})");
  EXPECT_EQ(*screen->lblSongTitle->text() + "/" + *screen->lblArtist->text(), "Unknown/Unknown");
  advance(10);
  press(*screen, "btnLessTime:");
  EXPECT_EQ(screen->currentTime, 0);
  EXPECT_DOUBLE_EQ(screen->player->currentTime(), 0);
  screen->currentTime = 110;
  press(*screen, "btnAddTime:");
  EXPECT_EQ(screen->currentTime, 120);
  EXPECT_EQ(screen->sliderOutlet->value(), 120.0f);
  advance(1);
  EXPECT_EQ(screen->currentTime, 0) << "the next tick wraps";

  press(*screen, "btnPlay:");
  ASSERT_TRUE(screen->isPlay);
  EXPECT_EQ(screen->btnPlayOutlet->currentImage()->name(), "play");
  press(*screen, "btnAddTime:");
  EXPECT_EQ(screen->currentTime, 15);
  EXPECT_FALSE(screen->player->isPlaying()) << "a jump during a pause pauses again";
  EXPECT_DOUBLE_EQ(screen->player->currentTime(), 15);
  advance(3);
  EXPECT_EQ(screen->currentTime, 15) << "no timer while paused";
}

// The slider's text and the sound it brings back are the e2e music_album_song_player scenario's.
TEST_F(MusicPlayerVCTest, TheSliderDuringAPauseBringsTheSoundBackUnderAStandingCounterAndClosingPauses) {
  auto screen = play(R"({"persistentID": "7", "duration": 200})");
  advance(5);
  press(*screen, "btnPlay:");
  screen->sliderOutlet->setValue(30.7f);
  screen->performAction("sliderValueChange:", screen->sliderOutlet);
  settle();
  EXPECT_DOUBLE_EQ(screen->player->currentTime(), 30) << "the seek lands on the whole second";
  EXPECT_TRUE(screen->isPlay);
  advance(3);
  EXPECT_EQ(*screen->lblTime->text(), "00:30") << "the counter stands under the running song";
  press(*screen, "btnPlay:");
  advance(1);
  EXPECT_EQ(*screen->lblTime->text(), "00:31");
  EXPECT_EQ(screen->btnPlayOutlet->currentImage()->name(), "pause");

  // Closing pauses, but the timer keeps the dismissed screen ticking.
  press(*screen, "btnClose:");
  advance(1);
  EXPECT_FALSE(nav()->presentedViewController());
  EXPECT_FALSE(screen->player->isPlaying());
  long before = screen->currentTime;
  std::weak_ptr<MusicPlayerVC> weak = screen;
  screen.reset();
  advance(3);
  ASSERT_FALSE(weak.expired()) << "the timer holds the dismissed screen";
  EXPECT_EQ(weak.lock()->currentTime, before + 3);
}

TEST_F(MusicPlayerVCTest, ArtworkGivesTheBannerAndABlurredBackdropAndItsAbsenceThePlaceholder) {
  auto withArt = play(R"({"persistentID": "7", "duration": 10})");
  ASSERT_TRUE(withArt->ivBg->image() && withArt->ivBg->image()->isPixels());
  CGSize view = withArt->view()->frame().size;
  EXPECT_EQ(withArt->ivBg->image()->size().width, view.width + 60) << "the blur spreads three radii each side";
  EXPECT_TRUE(withArt->ivSongBanner->image()->isPixels());
  EXPECT_EQ(withArt->ivSongBanner->layer().borderWidth, 1.0);
  platform.reset();
  auto without = play(R"({"persistentID": "7", "duration": 10, "artwork": false})");
  EXPECT_EQ(without->ivSongBanner->image()->name(), "ic_music_placeholder");
  EXPECT_EQ(without->ivBg->image()->size().width, 0) << "an empty picture, no backdrop";
  platform.reset();
  auto unrenderable = play(R"({"persistentID": "7", "duration": 10, "artwork": "unrenderable"})");
  EXPECT_EQ(unrenderable->ivSongBanner->image()->name(), "ic_music_placeholder");
  EXPECT_TRUE(unrenderable->ivBg->image()->isPixels()) << "the placeholder is blurred for the backdrop";
}

TEST_F(MusicPlayerVCTest, ASongWithoutAddressOrReadableLengthEndsTheProcess) {
  EXPECT_DEATH(play(R"({"persistentID": "7", "hasAssetURL": false})"),
               "Unexpectedly found nil while unwrapping an Optional value: file Nimbrel/MusicPlayerVC");
  EXPECT_DEATH(play(R"({"persistentID": "7", "readable": false})"), "infinite or NaN");
}

}  // namespace
}  // namespace nimbrel
