// The recent files screen opened over 10,000 records (half photos, half documents): the fold, the
// list build that resolves every record, and the cells of the visible rows.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "app/core/AppData.h"
#include "app/core/ApplicationMain.h"
#include "app/history/RecentFilesVC.h"
#include "backends/sim/SimPlatform.h"
#include "platform/foundation/NSLog.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UINavigationController.h"

namespace {

using namespace nimbrel;

std::string history() {
  std::string assets, records;
  for (int i = 0; i < 5'000; ++i) {
    std::string id = "H" + std::to_string(100000 + i);
    if (i) assets += ',';
    assets += R"({"id":")" + id + R"(/L0/001","created":"2026-03-01T09:30:00Z"})";
    records += R"({"url":"assets-library://asset/asset.JPG?id=)" + id + R"(&extJPG","openingDate":)" +
               std::to_string(700000000 + i) + R"(,"filetype":"photo"},)";
    records += R"({"url":"file:///nowhere/doc)" + std::to_string(i) + R"(.pdf","openingDate":)" +
               std::to_string(700000000 + i) + R"(,"filetype":"docs"})" + (i + 1 < 5'000 ? "," : "");
  }
  return R"({"preferences":{"isFirstTime":true,"kIsListView":true,"recentFiles":[)" + records +
         R"(]},"photos":{"assets":[)" + assets + "]}}";
}

void BM_OpenRecentWith10kEntries(benchmark::State& state) {
  LogSink::install([](std::string_view) {});
  sim::SimPlatform platform(*sim::Fixture::parse(history()));
  NimbrelApplicationMain();
  platform.runLoop().advance(6);
  auto nav = std::dynamic_pointer_cast<UINavigationController>(
      UIApplication::sharedApplication().keyWindow()->rootViewController());
  auto records = AppData::shared()->recentFiles;
  for (auto _ : state) {
    state.PauseTiming();
    AppData::shared()->recentFiles = records;
    if (nav->viewControllers().size() > 2) nav->popViewControllerAnimated(false);  // back to home
    platform.runLoop().runUntilIdle();
    state.ResumeTiming();
    nav->topViewController()->performAction("onRecentBtn:", nullptr);
    platform.runLoop().runUntilIdle();
    auto screen = std::dynamic_pointer_cast<RecentFilesVC>(nav->topViewController());
    screen->albumsCollectionView->layoutSubviews();
    state.counters["rows"] = static_cast<double>(screen->viewModel->items.size());
  }
}
BENCHMARK(BM_OpenRecentWith10kEntries)->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace
