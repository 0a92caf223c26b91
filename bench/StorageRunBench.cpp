// The storage run's two loops over a library of 100,000 assets (one in ten a video) on the
// simulated platform: the video step's request loop and the image step's size loop. The fixed
// delays are virtual time here and cost nothing; the delayed updates are drained untimed.
#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>
#include <string>

#include "app/core/ApplicationMain.h"
#include "app/core/HomeViewController.h"
#include "app/storage/StorageAnalysisVC.h"
#include "backends/sim/SimPlatform.h"
#include "platform/foundation/NSLog.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UINavigationController.h"

namespace {

using namespace nimbrel;
using Clock = std::chrono::steady_clock;

std::string fixture(int count) {
  std::string assets;
  assets.reserve(static_cast<size_t>(count) * 64);
  for (int i = 0; i < count; ++i) {
    assets += std::string(i ? "," : "") + R"({"id": "A)" + std::to_string(i) + R"(/L0/001", "mediaType": )" +
              (i % 10 == 0 ? "2" : "1") + R"(, "fileSize": )" + std::to_string(1'000'000 + i) + "}";
  }
  // No songs: the audio sum stays 0, so every visit runs again.
  return R"({"permissions": {"photos": 3, "music": 3}, "photos": {"assets": [)" + assets + "]}}";
}

double seconds(Clock::time_point from) { return std::chrono::duration<double>(Clock::now() - from).count(); }

void BM_StorageRunLoops(benchmark::State& state) {
  auto previousLog = LogSink::install([](std::string_view) {});
  auto parsed = sim::Fixture::parse(fixture(static_cast<int>(state.range(0))));
  if (!parsed.ok()) {
    state.SkipWithError(parsed.error().c_str());
    return;
  }
  auto platform = std::make_unique<sim::SimPlatform>(std::move(parsed).value());
  auto& loop = platform->runLoop();
  NimbrelApplicationMain();
  loop.advance(6);
  auto nav = std::dynamic_pointer_cast<UINavigationController>(
      UIApplication::sharedApplication().keyWindow()->rootViewController());
  auto home = std::dynamic_pointer_cast<HomeViewController>(nav->topViewController());
  double videoLoop = 0, imageLoop = 0;
  for (auto _ : state) {
    home->performAction("onStorageAnalysisBtn:", nullptr);
    auto screen = nav->presentedViewController();
    loop.runMainUntilIdle();
    if (!screen || loop.pendingBackgroundCount() != 1) {
      state.SkipWithError("the run did not start with the photo permission request");
      break;
    }
    loop.runBackgroundTask(0);  // the permission's answer: the video fetch

    auto t = Clock::now();
    loop.runBackgroundTask(loop.pendingBackgroundCount() - 1);  // the request loop
    double v = seconds(t);

    loop.runMainUntilIdle();  // the image fetch on the main thread
    t = Clock::now();
    loop.runBackgroundTask(loop.pendingBackgroundCount() - 1);  // the size loop
    double i = seconds(t);

    state.SetIterationTime(v + i);
    videoLoop += v;
    imageLoop += i;
    loop.advance(20);  // answers, delayed updates, audio and closing steps
    screen->dismissViewControllerAnimated(false, nullptr);
    loop.runUntilIdle();
  }
  auto n = static_cast<double>(state.iterations());
  state.counters["videoRequestLoop_ms"] = n ? videoLoop * 1e3 / n : 0;
  state.counters["imageLoop_ms"] = n ? imageLoop * 1e3 / n : 0;
  state.SetItemsProcessed(state.iterations() * state.range(0));
  home.reset();
  nav.reset();
  platform.reset();
  LogSink::install(std::move(previousLog));
}
BENCHMARK(BM_StorageRunLoops)->Arg(100'000)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

}  // namespace
