// The recent list's read at every appearance of the home screen: decode the stored bytes and fold
// the duplicates away, for a list of 10,000 records.
#include <benchmark/benchmark.h>

#include "app/core/AppData.h"
#include "app/core/BasicMethod.h"
#include "platform/PlatformState.h"
#include "platform/foundation/NSUserDefaults.h"

namespace {

using namespace nimbrel;

std::vector<File> records(int count) {
  std::vector<File> files;
  files.reserve(count);
  for (int i = 0; i < count; ++i) {
    // One record in ten repeats an earlier address, as reopened items do.
    int n = i % 10 == 9 ? i - 5 : i;
    std::string url = n % 3 == 0 ? "assets-library://asset/asset.JPG?id=5D1C0A3E-0000-4000-8000-" +
                                       std::to_string(100000000000 + n) + "&extJPG"
                      : n % 3 == 1 ? "file:///home/user/.local/share/nimbrel/Documents/Nimbrel/importedFiles/Report%20" +
                                         std::to_string(n) + ".pdf"
                                   : "ipod-library://item/item.mp3?id=" + std::to_string(1311234567890123 + n);
    files.push_back({*URL::withString(url), Date{785000000.0 + i}, static_cast<FileType>(n % 4)});
  }
  return files;
}

void BM_FoldOnly(benchmark::State& state) {
  auto files = records(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    state.PauseTiming();
    auto copy = files;
    state.ResumeTiming();
    auto kept = foldFiles(std::move(copy));
    benchmark::DoNotOptimize(kept.data());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_FoldOnly)->Arg(10'000)->Unit(benchmark::kMillisecond);

void BM_ReadAndFoldRecents(benchmark::State& state) {
  resetPlatformState();
  saveRecentFiles(records(static_cast<int>(state.range(0))));
  for (auto _ : state) {
    refreshRecentFiles();
    benchmark::DoNotOptimize(AppData::shared()->recentFiles.data());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
  resetPlatformState();
}
BENCHMARK(BM_ReadAndFoldRecents)->Arg(10'000)->Unit(benchmark::kMillisecond);

void BM_EncodeRecents(benchmark::State& state) {
  auto files = records(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    auto bytes = encodeFiles(files);
    benchmark::DoNotOptimize(bytes->data());
  }
}
BENCHMARK(BM_EncodeRecents)->Arg(10'000)->Unit(benchmark::kMillisecond);

}  // namespace
