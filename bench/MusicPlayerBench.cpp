// The music player's load on the desktop: a song whose embedded cover is a 3,000 × 3,000 JPEG
// (grainy, so that its entropy decoding costs what a photograph's does). The whole load of the
// screen on a 390 × 844 phone (cover decoded by the desktop decoder, blurred for the backdrop
// through Core Image, the song's length read, the player made): once the music scan has prepared
// the cover, as the desktop does for every song it finds, and for a cover it has not reached yet;
// the scan's own cost per cover; and the cover's part of the load alone.
#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <random>
#include <string>

#include "backends/desktop/DesktopImageDecoder.h"
#include "backends/desktop/media/ImageCodec.h"
#include "backends/desktop/media/SampleMedia.h"
#include "app/VC/UIViewControllerExtension.h"
#include "app/audio/MusicPlayerVC.h"
#include "app/storyboard/MainStoryboard.h"
#include "backends/desktop/DesktopMusicLibrary.h"
#include "backends/desktop/DesktopPlaces.h"
#include "platform/PlatformState.h"
#include "platform/av/MediaDurations.h"
#include "platform/coreimage/CIContext.h"
#include "platform/foundation/ManualRunLoop.h"
#include "platform/foundation/NSTimer.h"
#include "platform/mediaplayer/MPMediaQuery.h"
#include "platform/uikit/UIScreen.h"
#include "platform/coreimage/CIFilter.h"
#include "platform/mediaplayer/MPMediaItem.h"

namespace {

using namespace nimbrel::desktop;

constexpr int kCoverSide = 3000;
constexpr CGSize kPage{390, 844};

// One song with its cover, made once per run and removed at exit.
struct CoverSong {
  std::string folder, path;
  CoverSong() {
    char pattern[] = "/tmp/nimbrel-music-bench-XXXXXX";
    folder = ::mkdtemp(pattern);
    RgbaImage cover(kCoverSide, kCoverSide);
    std::mt19937 noise(7);
    auto channel = [](int v) { return static_cast<std::uint8_t>(std::clamp(v, 0, 255)); };
    for (int y = 0; y < kCoverSide; ++y) {
      for (int x = 0; x < kCoverSide; ++x) {
        double fx = double(x) / kCoverSide, fy = double(y) / kCoverSide;
        int base = static_cast<int>(128 + 90 * std::sin(fx * 9 + fy * 4) * std::cos(fy * 7));
        int grain = static_cast<int>(noise() % 24) - 12;
        auto* p = cover.at(x, y);
        p[0] = channel(base + grain + 40);
        p[1] = channel(static_cast<int>(fy * 200) + grain);
        p[2] = channel(255 - base + grain);
      }
    }
    // About 2.7 MB: what a photograph's cover at this size weighs at quality 90.
    writeJpeg(folder + "/cover.jpg", cover, 90);
    SampleSong song;
    song.title = "Cover";
    song.artworkJpeg = folder + "/cover.jpg";
    path = folder + "/Music/song.mp3";
    std::filesystem::create_directories(folder + "/Music");
    writeSampleSong(path, song);
  }
  ~CoverSong() {
    std::error_code ec;
    std::filesystem::remove_all(folder, ec);
  }
};

const CoverSong& coverSong() {
  static CoverSong song;
  return song;
}

std::shared_ptr<DesktopImageDecoder> cachingDecoder() {
  return std::make_shared<DesktopImageDecoder>(coverSong().folder + "/covers");
}

void forgetCovers() {
  std::error_code ec;
  std::filesystem::remove_all(coverSong().folder + "/covers", ec);
}

void BM_MusicPlayer_ArtworkDecodeAndBlur(benchmark::State& state) {
  ImageDecoder::install(cachingDecoder());
  MPMediaItemArtwork artwork(1, coverSong().path + "#artwork");
  for (auto _ : state) {
    auto image = artwork.imageWithSize(kPage);
    auto input = CIImage::imageWithImage(*image);
    CIContext context(nullptr);
    auto filter = CIFilter::filterWithName("CIGaussianBlur");
    filter->setDefaults();
    filter->setValue(*input, kCIInputImageKey);
    auto output = filter->valueForKey(kCIOutputImageKey);
    CGImageRef blurred = context.createCGImage(*output, output->extent());
    if (!blurred || blurred->rgba.empty()) state.SkipWithError("the cover was not decoded");
    benchmark::DoNotOptimize(blurred);
  }
  ImageDecoder::install(nullptr);
}
BENCHMARK(BM_MusicPlayer_ArtworkDecodeAndBlur)->Unit(benchmark::kMillisecond)->UseRealTime();

// `prepared`: the music scan made the cover's screen-sized copy before the first showing.
void loadPlayer(benchmark::State& state, bool prepared) {
  const CoverSong& cover = coverSong();
  ManualRunLoop loop(0);
  RunLoop* previous = RunLoop::install(&loop);
  resetPlatformState();
  UIScreen::mainScreen().configure(kPage, 3);
  nimbrel::registerMainStoryboard();
  auto music = std::make_shared<DesktopMusicLibrary>(":memory:", cover.folder + "/Music");
  MediaLibrarySource::install(music);
  MediaDurations::install(std::make_shared<DesktopMediaDurations>(music));
  auto decoder = cachingDecoder();
  ImageDecoder::install(decoder);
  auto song = MPMediaQuery::songsQuery()->items()->front();
  for (auto _ : state) {
    state.PauseTiming();
    forgetCovers();
    if (prepared) decoder->prepareCover(cover.path);
    state.ResumeTiming();
    auto screen = nimbrel::instantiate<nimbrel::MusicPlayerVC>(nimbrel::AppStoryboard::Main);
    screen->song = song;
    screen->view();
    if (!screen->ivBg->image() || screen->ivBg->image()->pixels()->rgba.empty()) state.SkipWithError("no backdrop");
    // The timer holds the screen: let it go before the next one.
    state.PauseTiming();
    if (auto timer = screen->timer.lock()) timer->invalidate();
    state.ResumeTiming();
  }
  resetPlatformState();
  RunLoop::install(previous);
}
void BM_MusicPlayer_Load(benchmark::State& state) { loadPlayer(state, true); }
void BM_MusicPlayer_LoadUnpreparedCover(benchmark::State& state) { loadPlayer(state, false); }
BENCHMARK(BM_MusicPlayer_Load)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_MusicPlayer_LoadUnpreparedCover)->Unit(benchmark::kMillisecond)->UseRealTime();

// What the background scan spends on one new 3,000 × 3,000 cover.
void BM_MusicScan_PrepareCover(benchmark::State& state) {
  auto decoder = cachingDecoder();
  for (auto _ : state) {
    state.PauseTiming();
    forgetCovers();
    state.ResumeTiming();
    decoder->prepareCover(coverSong().path);
  }
}
BENCHMARK(BM_MusicScan_PrepareCover)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
