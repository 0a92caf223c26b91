// The home screen's appearance with 10,000 stored recents: the native-ad request, the header, the
// storage line, the read and fold of the list and the strip's layout of its visible cells (a
// photo thumbnail, a document icon, a song's artwork), on the simulated platform.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "app/core/ApplicationMain.h"
#include "app/core/HomeViewController.h"
#include "backends/sim/SimPlatform.h"
#include "platform/foundation/NSLog.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UINavigationController.h"

namespace {

using namespace nimbrel;

// Records cycle photo, document, song; one in ten repeats an earlier address and is folded away.
std::string fixture(int count) {
  std::string assets, songs, recents;
  for (int i = 0; i < count; ++i) {
    int n = i % 10 == 9 ? i - 6 : i;
    std::string url;
    switch (n % 3) {
      case 0:
        url = "assets-library://asset/asset.JPG?id=A" + std::to_string(n) + "&extJPG";
        if (n == i) assets += std::string(assets.empty() ? "" : ",") + R"({"id": "A)" + std::to_string(n) + R"(/L0/001"})";
        break;
      case 1: url = "file:///home/user/Documents/Nimbrel/importedFiles/Report%20" + std::to_string(n) + ".pdf"; break;
      default:
        url = "ipod-library://item/item.mp3?id=" + std::to_string(1311234567890123 + n);
        if (n == i) {
          songs += std::string(songs.empty() ? "" : ",") + R"({"persistentID": ")" + std::to_string(1311234567890123 + n) +
                   R"(", "title": "Song", "fileSize": 1000})";
        }
    }
    recents += std::string(recents.empty() ? "" : ",") + R"({"url": ")" + url + R"(", "openingDate": )" +
               std::to_string(785000000 - i) + R"(, "filetype": ")" +
               (n % 3 == 0 ? "photo" : n % 3 == 1 ? "docs" : "music") + "\"}";
  }
  return R"({"photos": {"assets": [)" + assets + R"(]}, "music": {"songs": [)" + songs +
         R"(]}, "preferences": {"recentFiles": [)" + recents + "]}}";
}

void BM_HomeAppearanceWithRecents(benchmark::State& state) {
  auto previousLog = LogSink::install([](std::string_view) {});
  auto parsed = sim::Fixture::parse(fixture(static_cast<int>(state.range(0))));
  if (!parsed.ok()) {
    state.SkipWithError(parsed.error().c_str());
    return;
  }
  auto platform = std::make_unique<sim::SimPlatform>(std::move(parsed).value());
  NimbrelApplicationMain();
  platform->runLoop().advance(6);
  auto nav = std::dynamic_pointer_cast<UINavigationController>(
      UIApplication::sharedApplication().keyWindow()->rootViewController());
  auto home = std::dynamic_pointer_cast<HomeViewController>(nav->topViewController());
  if (!home) {
    state.SkipWithError("the home screen did not come");
    return;
  }
  for (auto _ : state) {
    home->viewWillAppear(false);
    home->recentFileCollectionView->layoutSubviews();
    platform->runLoop().runUntilIdle();  // the thumbnails' main-queue hops
    benchmark::DoNotOptimize(home->recentFileCollectionView->visibleCells().size());
  }
  state.counters["visibleCells"] = static_cast<double>(home->recentFileCollectionView->visibleCells().size());
  state.counters["strip"] = static_cast<double>(home->recentFileCollectionView->numberOfItemsInSection(0));
  home.reset();
  nav.reset();
  platform.reset();
  LogSink::install(std::move(previousLog));
}
BENCHMARK(BM_HomeAppearanceWithRecents)->Arg(10'000)->Unit(benchmark::kMillisecond);

}  // namespace
