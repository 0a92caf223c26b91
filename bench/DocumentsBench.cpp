// The documents screen over an imported folder of 5,000 files on the simulated platform: a reload
// reads the folder, builds the rows and lays out the cells on screen (their attributes are read
// from the disk), as the list form shows them.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "app/core/ApplicationMain.h"
#include "app/documents/DocumentVC.h"
#include "backends/sim/SimPlatform.h"
#include "platform/foundation/NSLog.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UINavigationController.h"

namespace {

using namespace nimbrel;

std::string folderOf(int count) {
  std::string docs;
  docs.reserve(static_cast<size_t>(count) * 48);
  for (int i = 0; i < count; ++i) {
    static const char* kinds[] = {"pdf", "txt", "docx", "zip", "mp3"};
    if (i) docs += ',';
    docs += R"({"name":"file-)" + std::to_string(i) + "." + kinds[i % 5] + R"(","size":)" + std::to_string(1000 + i) + "}";
  }
  return R"({"preferences":{"isFirstTime":true,"kIsListView":true},"documents":[)" + docs + "]}";
}

void BM_DocumentsReload(benchmark::State& state) {
  LogSink::install([](std::string_view) {});
  auto platform = std::make_unique<sim::SimPlatform>(*sim::Fixture::parse(folderOf(static_cast<int>(state.range(0)))));
  NimbrelApplicationMain();
  platform->runLoop().advance(6);
  auto nav = std::dynamic_pointer_cast<UINavigationController>(
      UIApplication::sharedApplication().keyWindow()->rootViewController());
  nav->topViewController()->performAction("onDocumentBtn:", nullptr);
  platform->runLoop().runUntilIdle();
  auto screen = std::dynamic_pointer_cast<DocumentVC>(nav->topViewController());
  if (!screen) {
    state.SkipWithError("the Documents button pushed no DocumentVC");
    return;
  }
  for (auto _ : state) {
    screen->reloadDocuments();
    platform->runLoop().runUntilIdle();
    screen->albumsCollectionView->layoutSubviews();
  }
  state.counters["rows"] = static_cast<double>(screen->viewModel->items.size());
  state.counters["visibleCells"] = static_cast<double>(screen->albumsCollectionView->visibleCells().size());
  screen.reset();
  nav.reset();
  platform.reset();
  LogSink::install(nullptr);
}
BENCHMARK(BM_DocumentsReload)->Arg(5'000)->Unit(benchmark::kMillisecond);

}  // namespace
