#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <vector>

#include "platform/foundation/Date.h"
#include "platform/foundation/NSByteCountFormatter.h"
#include "platform/foundation/NSDateFormatter.h"
#include "platform/foundation/URL.h"

namespace {

constexpr int kRecords = 10'000;

// Names like those of imported files: blanks, accents and a mix of extensions.
std::vector<std::string> recordPaths() {
  static const char* const kExtensions[] = {"jpg", "PDF", "mp3", "tar.gz", "mov"};
  std::vector<std::string> paths;
  paths.reserve(kRecords);
  for (int i = 0; i < kRecords; ++i) {
    paths.push_back("/home/a/Documents/Nimbrel/importedFiles/Caf\xC3\xA9 r\xC3\xA9sum\xC3\xA9 " +
                    std::to_string(i) + "." + kExtensions[i % 5]);
  }
  return paths;
}

void BM_FileURLNameAndExtension(benchmark::State& state, bool askFileSystem) {
  std::vector<std::string> paths = recordPaths();
  for (auto _ : state) {
    std::size_t total = 0;
    for (const std::string& path : paths) {
      URL url = askFileSystem ? URL::fileURLWithPath(path) : URL::fileURLWithPath(path, false);
      total += url.lastPathComponent().size() + url.pathExtension().size();
    }
    benchmark::DoNotOptimize(total);
  }
  state.SetItemsProcessed(state.iterations() * kRecords);
}
BENCHMARK_CAPTURE(BM_FileURLNameAndExtension, stat, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_FileURLNameAndExtension, toldNotDirectory, false)
    ->Unit(benchmark::kMillisecond);

void BM_ParseURLStrings(benchmark::State& state) {
  std::vector<std::string> texts;
  for (const std::string& path : recordPaths())
    texts.push_back(URL::fileURLWithPath(path, false).absoluteString());
  for (auto _ : state) {
    std::size_t total = 0;
    for (const std::string& text : texts) total += URL::withString(text)->absoluteString().size();
    benchmark::DoNotOptimize(total);
  }
  state.SetItemsProcessed(state.iterations() * kRecords);
}
BENCHMARK(BM_ParseURLStrings)->Unit(benchmark::kMillisecond);

void BM_FormatDates(benchmark::State& state) {
  NSDateFormatter formatter;
  formatter.setDateFormat("d MMM yyyy HH:mm");
  formatter.setTimeZone("Europe/Lisbon");
  for (auto _ : state) {
    std::size_t total = 0;
    for (int i = 0; i < kRecords; ++i) {
      total += formatter.stringFromDate(Date{7.0e8 + 3'599.0 * i}).size();
    }
    benchmark::DoNotOptimize(total);
  }
  state.SetItemsProcessed(state.iterations() * kRecords);
}
BENCHMARK(BM_FormatDates)->Unit(benchmark::kMillisecond);

void BM_FormatByteCounts(benchmark::State& state) {
  for (auto _ : state) {
    std::size_t total = 0;
    for (std::int64_t i = 0; i < kRecords; ++i) {
      total += NSByteCountFormatter::stringFromByteCount(i * 7'654'321,
                                                         NSByteCountFormatterCountStyle::file)
                   .size();
    }
    benchmark::DoNotOptimize(total);
  }
  state.SetItemsProcessed(state.iterations() * kRecords);
}
BENCHMARK(BM_FormatByteCounts)->Unit(benchmark::kMillisecond);

}  // namespace
