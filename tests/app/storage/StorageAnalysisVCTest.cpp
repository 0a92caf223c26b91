#include "app/storage/StorageAnalysisVC.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "app/core/AppData.h"
#include "app/core/ApplicationMain.h"
#include "app/core/HomeViewController.h"
#include "app/SimTest.h"
#include "platform/ads/FullScreenAdStage.h"
#include "platform/libs/SVProgressHUD.h"
#include "platform/uikit/UIAlertController.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UINavigationController.h"

namespace nimbrel {
namespace {

// One video of 50,000,000 bytes, an image of 3,000,000 and one of 33,554,433 (counted as
// 33,554,432 after the float step), two songs of 6,000,000 bytes together, on a 128 GB volume
// with 40 GB free. The video is counted once as video and once more among the images.
constexpr std::int64_t kVideo = 50'000'000;
constexpr std::int64_t kImages = 50'000'000 + 3'000'000 + 33'554'432;
constexpr std::int64_t kAudio = 6'000'000;
constexpr std::int64_t kUsed = 128'000'000'000 - 40'000'000'000;
constexpr std::int64_t kOther = kUsed - kVideo - kAudio - kImages;

std::string library(const std::string& permissions = R"({"photos": 3, "music": 3})",
                    const std::string& songs = R"({"persistentID": "11", "fileSize": 4800000},
                                                   {"persistentID": "12", "fileSize": 1200000})",
                    const std::string& extra = "") {
  return R"({"now": "2026-11-22T10:00:00Z", )" + extra + R"("permissions": )" + permissions + R"(,
    "volume": {"size": 128000000000, "free": 40000000000, "importantAvailable": 45000000000},
    "photos": {"assets": [
      {"id": "V1/L0/001", "mediaType": 2, "fileSize": 50000000},
      {"id": "P1/L0/001", "fileSize": 3000000},
      {"id": "P2/L0/001", "fileSize": 33554433}]},
    "music": {"songs": [)" + songs + "]}}";
}

// The run's share: whole mebibytes, ×100 as an integer, over the total's whole mebibytes (122070).
float runShareOf(std::int64_t mebibytes) { return static_cast<float>(mebibytes * 100) / 122070.0f / 100.0f; }
// The fast path multiplies by 100 in float.
float fastShareOf(std::int64_t mebibytes) { return static_cast<float>(mebibytes) * 100.0f / 122070.0f / 100.0f; }

class StorageAnalysisVCTest : public testing::SimTest {
 protected:
  // Launches, waits for the home screen, and opens the storage analysis from its button. The
  // moment of the press is `t0`.
  std::shared_ptr<StorageAnalysisVC> open(const std::string& fixture, bool pump = true) {
    launchToHome(fixture);
    return openAgain(pump);
  }
  std::shared_ptr<StorageAnalysisVC> openAgain(bool pump = true) {
    auto home = std::dynamic_pointer_cast<HomeViewController>(nav()->topViewController());
    EXPECT_TRUE(home);
    t0 = loop().elapsed();
    home->performAction("onStorageAnalysisBtn:", home->outlet("btnStorageAnalysis"));
    auto screen = std::dynamic_pointer_cast<StorageAnalysisVC>(nav()->presentedViewController());
    EXPECT_TRUE(screen);
    if (pump) settle();
    return screen;
  }
  // Moves virtual time to `t0 + seconds`.
  void at(double seconds) { advance(t0 + seconds - loop().elapsed()); }
  size_t requests(const std::string& kind) { return calls("permission.request " + kind); }
  std::vector<UIColor> colours(const StorageAnalysisVC& s, std::initializer_list<int> measured) {
    std::vector<UIColor> out(5, s.defaultColor);
    const UIColor* own[] = {&s.videoColor, &s.imageColor, &s.audioColor, &s.otherColor};
    for (int i : measured) out[static_cast<size_t>(i)] = *own[i];
    return out;
  }
  void expectScale(const StorageAnalysisVC& s, const std::vector<float>& expected) {
    auto values = s.pieChartView->scaleValues();
    ASSERT_EQ(values.size(), expected.size());
    for (size_t i = 0; i < values.size(); ++i) EXPECT_FLOAT_EQ(static_cast<float>(values[i]), expected[i]) << "sector " << i;
    EXPECT_EQ(s.pieChartView->animations().back().duration, 2.0);
  }
  double t0 = 0;
};

// The labels' texts, the fields, the volume labels and the ring's fixed geometry are read by the
// e2e storage_analysis_from_button scenario (the used share's truncation by StorageFiguresTest);
// this one reads the ring as it grows.
TEST_F(StorageAnalysisVCTest, AWholeRunGrowsTheRingSectorBySectorOnItsFixedDelays) {
  auto s = open(library(R"({"photos": 3, "music": {"status": 0, "answer": 3}})"));
  ASSERT_EQ(s->pieChartView->animations().size(), 1u);
  EXPECT_EQ(s->pieChartView->animations()[0].duration, 0.0);
  EXPECT_EQ(s->pieChartView->scaleValues(), std::vector<double>(5, static_cast<double>(0.2f)));
  EXPECT_EQ(s->pieChartView->sectorColors(), colours(*s, {}));

  at(0.99);
  EXPECT_EQ(s->pieChartView->animations().size(), 1u) << "nothing is drawn before the first delayed updates";
  at(1.0);
  EXPECT_EQ(s->pieChartView->sectorColors(), colours(*s, {0, 1}));
  float video = runShareOf(47), images = runShareOf(82);
  // The image updates come last here: the remainder holds both terms.
  expectScale(*s, {video, images, 0, 0, 1.0f - video - images});

  // The audio step waits 8 s after the image loop; its field runs 1.0 s behind the sum.
  at(8.0);
  EXPECT_EQ(requests("music"), 1u);
  EXPECT_EQ(AppData::shared()->audioSpace, 0);
  at(9.0);
  float audio = runShareOf(5);
  expectScale(*s, {video, images, audio, 0, 1.0f - video - images - audio});
  EXPECT_EQ(s->pieChartView->sectorColors(), colours(*s, {0, 1, 2}));

  // The closing step comes 5 s after the audio loop.
  at(13.0);
  float other = runShareOf(83787);
  expectScale(*s, {video, images, audio, other, 1.0f - video - images - audio - other});
  EXPECT_EQ(s->pieChartView->sectorColors(), colours(*s, {0, 1, 2, 3}));
}

TEST_F(StorageAnalysisVCTest, ALateVideoAnswerResetsTheRemainderToItsOwnTerm) {
  auto s = open(library(), false);
  // The image loop runs before the video request is answered, so at 1.0 s the video update comes
  // after the image updates.
  loop().runMainUntilIdle();
  loop().runBackgroundTask(0);  // photo permission: the video step
  loop().runBackgroundTask(0);  // the request loop; the image step is posted to main
  loop().runMainUntilIdle();
  ASSERT_EQ(loop().pendingBackgroundCount(), 2u);
  loop().runBackgroundTask(1);  // the image loop
  loop().runBackgroundTask(0);  // the video's answer
  at(1.0);
  float video = runShareOf(47), images = runShareOf(82);
  expectScale(*s, {video, images, 0, 0, 1.0f - video});
  EXPECT_EQ(s->pieChartView->sectorColors(), colours(*s, {0, 1}));
}

TEST_F(StorageAnalysisVCTest, OnlyAVideoAnsweredWithAFileCountsAsVideo) {
  const std::tuple<const char*, std::int64_t, const char*> rows[] = {
      {"url", 50'000'000, "47.68 MB"}, {"composition", 0, "--"}, {"none", 0, "--"}};
  for (auto [answer, video, label] : rows) {
    SCOPED_TRACE(answer);
    auto s = open(std::string(R"({"permissions": {"photos": 3, "music": 3}, "photos": {"assets": [
        {"id": "V1/L0/001", "mediaType": 2, "fileSize": 50000000, "video": ")") + answer + R"("}]}})");
    at(13.0);
    EXPECT_EQ(AppData::shared()->videoSpace, video);
    EXPECT_EQ(s->lblVideo->text(), label);
    EXPECT_EQ(AppData::shared()->imagesSpace.bytes, 50'000'000) << "the image step counts every asset";
    EXPECT_EQ(s->pieChartView->sectorColors()[0], video ? s->videoColor : s->defaultColor);
    platform.reset();
  }
}

TEST_F(StorageAnalysisVCTest, LeavingDoesNotStopARunAndAVisitDuringItStartsASecond) {
  auto first = open(library());
  press(*first, "onBackBtn:");
  auto asks = requests("photos");
  at(0.5);
  auto second = openAgain();
  EXPECT_EQ(requests("photos"), asks + 1) << "the fields are still 0: a second run";
  advance(13.0);
  EXPECT_EQ(first->lblOther->text(), "81.82 GB") << "the first run closed on its dismissed screen";
  EXPECT_EQ(second->lblOther->text(), "81.82 GB");
  EXPECT_EQ(AppData::shared()->otherSpace, kOther);
}

TEST_F(StorageAnalysisVCTest, VideoAnswersOnSeveralThreadsAtOnceAddUpExactly) {
  std::string videos;
  std::int64_t sum = 0;
  for (int i = 0; i < 40; ++i) {
    videos += R"({"id": "V)" + std::to_string(i) + R"(/L0/001", "mediaType": 2, "fileSize": )" +
              std::to_string(1'000'003 + i) + "},";
    sum += 1'000'003 + i;
  }
  auto s = open(R"({"permissions": {"photos": 3, "music": 3}, "photos": {"assets": [)" + videos +
                    R"({"id": "P1/L0/001"}]}})",
                false);
  loop().runMainUntilIdle();
  loop().runBackgroundTask(0);  // photo permission: the video step
  loop().runBackgroundTask(0);  // the request loop
  ASSERT_EQ(loop().pendingBackgroundCount(), 40u);
  // The platform answers on queues of its own: four threads take ten answers each.
  std::vector<std::thread> answering;
  for (int t = 0; t < 4; ++t) {
    answering.emplace_back([this] {
      for (int i = 0; i < 10; ++i) loop().runBackgroundTask(0);
    });
  }
  for (auto& t : answering) t.join();
  at(1.0);
  EXPECT_EQ(AppData::shared()->videoSpace, sum);
  EXPECT_EQ(s->lblVideo->text(), "38.15 MB");
}

TEST_F(StorageAnalysisVCTest, TheImageLoopRunsBesideTheMainThreadsUpdates) {
  std::string assets;
  for (int i = 0; i < 2000; ++i) assets += std::string(i ? "," : "") + R"({"id": "P)" + std::to_string(i) + R"(/L0/001", "fileSize": 1000})";
  auto s = open(R"({"permissions": {"photos": 3, "music": 3}, "photos": {"assets": [)" + assets + "]}}", false);
  loop().runMainUntilIdle();
  loop().runBackgroundTask(0);  // photo permission: the video step
  loop().runBackgroundTask(0);  // no videos: straight on to the image step
  loop().runMainUntilIdle();
  ASSERT_EQ(loop().pendingBackgroundCount(), 1u);
  std::atomic<bool> done{false};
  std::thread sizing([&] {
    loop().runBackgroundTask(0);
    done = true;
  });
  // Once the loop has left the queue, time moves on the main thread, so that the earliest updates
  // draw while the loop still adds.
  while (loop().pendingBackgroundCount() != 0) std::this_thread::yield();
  while (!done) advance(0.001);
  sizing.join();
  advance(1.0);
  EXPECT_EQ(AppData::shared()->imagesSpace.bytes, 2'000'000) << "the last update reads the whole sum";
  EXPECT_EQ(s->lblImages->text(), "1.91 MB");
}

TEST_F(StorageAnalysisVCTest, ASecondVisitAfterAClosedRunTakesTheFastPathWithoutAsking) {
  auto first = open(library());
  at(13.0);
  ASSERT_NE(AppData::shared()->otherSpace, 0);
  press(*first, "onBackBtn:");
  ASSERT_FALSE(nav()->presentedViewController());
  auto photoAsks = requests("photos"), musicAsks = requests("music");

  auto second = openAgain();
  EXPECT_EQ(requests("photos"), photoAsks) << "no run, no permission request";
  EXPECT_EQ(requests("music"), musicAsks);
  EXPECT_EQ(second->pieChartView->sectorColors(), colours(*second, {0, 1, 2, 3}));
  ASSERT_EQ(second->pieChartView->animations().size(), 2u) << "the neutral ring, then one animation";
  float video = fastShareOf(47), images = fastShareOf(82), audio = fastShareOf(5), other = fastShareOf(83787);
  expectScale(*second, {video, images, audio, other, 1.0f - video - images - audio - other});
  EXPECT_EQ(second->videoPR, 0) << "the run's shares stay untouched";
  advance(20);
  EXPECT_EQ(second->pieChartView->animations().size(), 2u) << "nothing more comes";
}

TEST_F(StorageAnalysisVCTest, APhoneWithoutSongsRunsAgainAtEveryVisit) {
  auto first = open(library(R"({"photos": 3, "music": 3})", ""));
  at(13.0);
  EXPECT_EQ(AppData::shared()->audioSpace, 0);
  EXPECT_NE(AppData::shared()->otherSpace, 0);
  press(*first, "onBackBtn:");
  auto asks = requests("photos");
  auto second = openAgain();
  EXPECT_EQ(requests("photos"), asks + 1);
  EXPECT_EQ(second->pieChartView->sectorColors(), colours(*second, {})) << "grey until the run's updates";
  at(13.0);
  EXPECT_EQ(second->pieChartView->sectorColors(), colours(*second, {0, 1, 3})) << "audio never measured";
}

TEST_F(StorageAnalysisVCTest, RefusedMusicShowsTheAlertAndLeavesTheAudioSectorGrey) {
  auto s = open(library(R"({"photos": 3, "music": {"status": 0, "answer": 1}})"));
  at(8.0);
  auto alert = std::dynamic_pointer_cast<UIAlertController>(s->presentedViewController());
  ASSERT_TRUE(alert);
  EXPECT_EQ(alert->alertTitle(), "Nimbrel  Would Like To Access the Music");
  EXPECT_EQ(alert->message(),
            "You must give the app permission to access the Mp3 first.\nGoto settings and give permission to access Mp3.");
  ASSERT_EQ(alert->actions().size(), 1u);
  EXPECT_EQ(alert->actions()[0].title, "Open Settings");
  EXPECT_EQ(alert->actions()[0].style, UIAlertActionStyle::cancel);
  at(30);
  EXPECT_EQ(s->pieChartView->sectorColors(), colours(*s, {0, 1}));
  EXPECT_EQ(s->lblOther->text(), "--");
  EXPECT_EQ(s->lblFreeSpace->text(), "--");
  EXPECT_EQ(AppData::shared()->otherSpace, 0) << "the next visit runs again";

  ASSERT_TRUE(alert->pressActionWithTitle("Open Settings"));
  settle();
  ASSERT_EQ(UIApplication::sharedApplication().openedURLs().size(), 1u);
  EXPECT_EQ(UIApplication::sharedApplication().openedURLs()[0].absoluteString(), "app-settings:");
}

TEST_F(StorageAnalysisVCTest, PhotoAnswersOtherThanAuthorisedEndTheRunSilently) {
  for (int answer : {1, 2, 4}) {
    auto s = open(library(R"({"photos": )" + std::to_string(answer) + R"(, "music": {"status": 0, "answer": 3}})"));
    at(30);
    SCOPED_TRACE(answer);
    EXPECT_EQ(s->pieChartView->animations().size(), 1u) << "the neutral ring stays";
    EXPECT_EQ(s->pieChartView->sectorColors(), colours(*s, {}));
    EXPECT_EQ(requests("music"), 0u);
    EXPECT_FALSE(s->presentedViewController()) << "no alert for photos here";
    EXPECT_EQ(AppData::shared()->videoSpace + AppData::shared()->imagesSpace.bytes, 0);
    platform.reset();
  }
}

TEST_F(StorageAnalysisVCTest, EveryAppearanceOffersAReadyInterstitial) {
  auto s = open(library(R"({"photos": 2, "music": 3})", "", R"("ads": {"applovin": {"interstitial": "ready"}}, )"));
  // The splash showed the launch's ad; close it so that a new one loads.
  FullScreenAdStage::shared().close();
  settle();
  press(*s, "onBackBtn:");
  for (int visit = 0; visit < 2; ++visit) {
    SCOPED_TRACE(visit);
    auto screen = openAgain();
    EXPECT_EQ(SVProgressHUD::state().status, "Loading Ads...");
    advance(0.5 + SVProgressHUD::kFadeOutAnimationDuration);
    ASSERT_TRUE(FullScreenAdStage::shared().showing());
    FullScreenAdStage::shared().close();
    settle();
    press(*screen, "onBackBtn:");
  }
}

using StorageAnalysisVCDeathTest = StorageAnalysisVCTest;

TEST_F(StorageAnalysisVCDeathTest, UnreadableOrEmptyVolumeFiguresEndTheProcess) {
  EXPECT_DEATH(open(R"({"permissions": {"photos": 2}, "volume": {"size": null}})"),
               "Unexpectedly found nil while unwrapping an Optional value");
  EXPECT_DEATH(open(R"({"permissions": {"photos": 2}, "volume": {"free": null}})"),
               "Unexpectedly found nil while unwrapping an Optional value");
  EXPECT_DEATH(open(R"({"permissions": {"photos": 2}, "volume": {"size": 0, "free": 0, "importantAvailable": 0}})"),
               "Division by zero");
}

}  // namespace
}  // namespace nimbrel
