#include <benchmark/benchmark.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include "../tests/platform/foundation/PlistSamples.h"
#include "platform/foundation/BinaryPropertyList.h"

namespace {

void BM_PlistEncode10kRecords(benchmark::State& state) {
  const PlistValue records = plist_samples::records(10000);
  size_t bytes = 0;
  for (auto _ : state) {
    auto out = BinaryPropertyList::write(records);
    bytes = out->size();
    benchmark::DoNotOptimize(out);
  }
  state.counters["file_bytes"] = static_cast<double>(bytes);
}
BENCHMARK(BM_PlistEncode10kRecords)->Unit(benchmark::kMillisecond);

void BM_PlistDecode10kRecords(benchmark::State& state) {
  const Data file = *BinaryPropertyList::write(plist_samples::records(10000));
  for (auto _ : state) {
    auto value = BinaryPropertyList::read(file);
    if (!value.ok())
      state.SkipWithError(value.error().c_str());
    benchmark::DoNotOptimize(value);
    // Freeing the 30,000 allocations of the result is the caller's cost, not decoding's.
    state.PauseTiming();
    value = Result<PlistValue>(PlistValue());
    state.ResumeTiming();
  }
  state.counters["file_bytes"] = static_cast<double>(file.size());
}
BENCHMARK(BM_PlistDecode10kRecords)->Unit(benchmark::kMillisecond);

// A file named by NIMBREL_PLIST_BENCH_FILE, so that bench/plist_vs_python.sh can time the
// very records it times plistlib on. Registered only when that is set.
Data benchFile() {
  const char* path = std::getenv("NIMBREL_PLIST_BENCH_FILE");
  if (!path)
    return {};
  std::ifstream in(path, std::ios::binary);
  return Data(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void BM_PlistFileDecode(benchmark::State& state) {
  static const Data file = benchFile();
  for (auto _ : state) {
    auto value = BinaryPropertyList::read(file);
    if (!value.ok())
      state.SkipWithError(value.error().c_str());
    benchmark::DoNotOptimize(value);
    state.PauseTiming();
    value = Result<PlistValue>(PlistValue());
    state.ResumeTiming();
  }
}

void BM_PlistFileEncode(benchmark::State& state) {
  static const Data file = benchFile();
  auto value = BinaryPropertyList::read(file);
  if (!value.ok()) {
    state.SkipWithError(value.error().c_str());
    return;
  }
  for (auto _ : state) {
    auto out = BinaryPropertyList::write(*value);
    benchmark::DoNotOptimize(out);
  }
}

[[maybe_unused]] const bool kFileBenchmarks = [] {
  if (std::getenv("NIMBREL_PLIST_BENCH_FILE")) {
    benchmark::RegisterBenchmark("BM_PlistFileEncode", BM_PlistFileEncode)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("BM_PlistFileDecode", BM_PlistFileDecode)
        ->Unit(benchmark::kMillisecond);
  }
  return true;
}();

}  // namespace
