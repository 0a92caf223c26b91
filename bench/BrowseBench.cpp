// The images screen over a library of 50,000 assets on the simulated platform: building the album
// level, and opening the album (the item list is built on the main thread).
#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "app/VC/UIViewControllerExtension.h"
#include "app/core/ApplicationMain.h"
#include "app/media/ImagesVC.h"
#include "app/media/PhotoLibraryAccess.h"
#include "backends/sim/SimPlatform.h"
#include "platform/foundation/NSLog.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UINavigationController.h"

namespace {

using namespace nimbrel;

std::string libraryOf(int count) {
  std::string assets, ids;
  assets.reserve(static_cast<size_t>(count) * 120);
  for (int i = 0; i < count; ++i) {
    std::string id = "B" + std::to_string(100000 + i) + "/L0/001";
    if (i) {
      assets += ',';
      ids += ',';
    }
    assets += R"({"id":")" + id + R"(","created":")" + std::to_string(2000 + i % 25) +
              R"(-03-01T09:30:00Z","fileSize":)" + std::to_string(1000000 + i) + "}";
    ids += '"' + id + '"';
  }
  return R"({"preferences":{"isFirstTime":true,"kIsListView":false},"photos":{"assets":[)" + assets +
         R"(],"albums":[{"id":"LIB","title":"Recents","type":2,"subtype":209,"assets":[)" + ids +
         R"(]},{"id":"ALL","title":"All","type":1,"subtype":2,"assets":[)" + ids + "]}]}}";
}

struct World {
  std::unique_ptr<sim::SimPlatform> platform;
  std::shared_ptr<ImagesVC> screen;
};

World& world(int count) {
  static World w = [count] {
    LogSink::install([](std::string_view) {});
    World made;
    made.platform = std::make_unique<sim::SimPlatform>(*sim::Fixture::parse(libraryOf(count)));
    NimbrelApplicationMain();
    made.platform->runLoop().advance(6);
    made.screen = instantiate<ImagesVC>(AppStoryboard::Main);
    made.screen->albums = albumsForMediaType(MediaTypes::image);
    std::dynamic_pointer_cast<UINavigationController>(UIApplication::sharedApplication().keyWindow()->rootViewController())
        ->pushViewController(made.screen, true);
    made.platform->runLoop().runUntilIdle();
    return made;
  }();
  return w;
}

void BM_AlbumLevel50k(benchmark::State& state) {
  auto& w = world(50'000);
  for (auto _ : state) {
    w.screen->returnToAlbumLevel(true);
    w.platform->runLoop().runUntilIdle();
    w.screen->albumsCollectionView->layoutSubviews();
  }
  state.counters["albums"] = static_cast<double>(w.screen->viewModel->items.size());
}
BENCHMARK(BM_AlbumLevel50k)->Unit(benchmark::kMillisecond)->Iterations(5);

void BM_OpenAlbumOf50k(benchmark::State& state) {
  auto& w = world(50'000);
  for (auto _ : state) {
    state.PauseTiming();
    w.screen->returnToAlbumLevel(true);
    w.platform->runLoop().runUntilIdle();
    state.ResumeTiming();
    w.screen->openAlbumAtRow(0);
    w.platform->runLoop().runUntilIdle();
    w.screen->albumsCollectionView->layoutSubviews();
  }
  state.counters["items"] = static_cast<double>(w.screen->photoViewModel->items.size());
}
BENCHMARK(BM_OpenAlbumOf50k)->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace
