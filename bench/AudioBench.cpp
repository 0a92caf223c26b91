// The audio screen over a 20,000-song library on the simulated platform: the albums query with the
// album level laid out, and opening an album of 2,000 songs (the song records are built on the
// main thread under the overlay).
#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "app/audio/AudioVC.h"
#include "app/core/ApplicationMain.h"
#include "backends/sim/SimPlatform.h"
#include "platform/foundation/NSLog.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UINavigationController.h"

namespace {

using namespace nimbrel;

// One album of 2,000 songs, then 1,800 albums of ten.
std::string musicLibrary() {
  std::string songs;
  songs.reserve(20'000 * 150);
  for (int i = 0; i < 20'000; ++i) {
    std::string album = i < 2'000 ? "Big" : "Album " + std::to_string((i - 2'000) / 10);
    if (i) songs += ',';
    songs += R"({"persistentID":")" + std::to_string(1'000'000 + i) + R"(","title":"Song )" + std::to_string(i) +
             R"(","artist":"Ana","albumTitle":")" + album + R"(","duration":)" + std::to_string(120 + i % 300) +
             R"(,"fileSize":)" + std::to_string(3'000'000 + i) + "}";
  }
  return R"({"preferences":{"isFirstTime":true,"kIsListView":false},"music":{"songs":[)" + songs + "]}}";
}

struct World {
  std::unique_ptr<sim::SimPlatform> platform;
  std::shared_ptr<AudioVC> screen;
};

World& world() {
  static World w = [] {
    LogSink::install([](std::string_view) {});
    World made;
    made.platform = std::make_unique<sim::SimPlatform>(*sim::Fixture::parse(musicLibrary()));
    NimbrelApplicationMain();
    made.platform->runLoop().advance(6);
    auto nav = std::dynamic_pointer_cast<UINavigationController>(
        UIApplication::sharedApplication().keyWindow()->rootViewController());
    nav->topViewController()->performAction("onAudioBtn:", nullptr);
    made.platform->runLoop().runUntilIdle();
    made.screen = std::dynamic_pointer_cast<AudioVC>(nav->topViewController());
    return made;
  }();
  return w;
}

void BM_AudioAlbumLevel20kSongs(benchmark::State& state) {
  auto& w = world();
  for (auto _ : state) {
    state.PauseTiming();
    w.screen->albumModelsArr.clear();
    state.ResumeTiming();
    w.screen->loadAlbums();
    w.platform->runLoop().runUntilIdle();
    w.screen->albumsCollectionView->layoutSubviews();
  }
  state.counters["albums"] = static_cast<double>(w.screen->viewModel->items.size());
}
BENCHMARK(BM_AudioAlbumLevel20kSongs)->Unit(benchmark::kMillisecond)->Iterations(10);

void BM_AudioOpenAlbumOf2000Songs(benchmark::State& state) {
  auto& w = world();
  for (auto _ : state) {
    w.screen->openAlbumAtRow(0);
    w.platform->runLoop().runUntilIdle();
    w.screen->albumsCollectionView->layoutSubviews();
    state.PauseTiming();
    w.screen->onMainFolderBtnKeepingAlbums(nullptr);
    state.ResumeTiming();
  }
  state.counters["songs"] = static_cast<double>(w.screen->photoViewModel->items.size());
}
BENCHMARK(BM_AudioOpenAlbumOf2000Songs)->Unit(benchmark::kMillisecond)->Iterations(20);

}  // namespace
