// The record-level codec of the recent and favourite lists: 10,000 `File` records to and from
// their binary property list, directly and through the generic tree of values.
#include <benchmark/benchmark.h>

#include "app/core/FileListCodec.h"

namespace {

using namespace nimbrel;

std::vector<File> records(int count) {
  std::vector<File> files;
  files.reserve(count);
  for (int i = 0; i < count; ++i) {
    int n = i % 10 == 9 ? i - 5 : i;  // one in ten reopened
    std::string url = n % 4 == 0   ? "assets-library://asset/asset.JPG?id=5D1C0A3E-0000-4000-8000-" +
                                       std::to_string(100000000000 + n) + "&extJPG"
                      : n % 4 == 1 ? "assets-library://asset/asset.MOV?id=7A2B0C3E-0000-4000-8000-" +
                                         std::to_string(100000000000 + n) + "&extMOV"
                      : n % 4 == 2 ? "ipod-library://item/item.mp3?id=" + std::to_string(1311234567890123 + n)
                                   : "file:///home/user/.local/share/nimbrel/Documents/importedFiles/Report%20" +
                                         std::to_string(n) + ".pdf";
    files.push_back({*URL::withString(url), Date{785000000.0 + i * 0.001}, static_cast<FileType>((n + 1) % 4)});
  }
  return files;
}

template <bool direct>
void BM_FileListEncode(benchmark::State& state) {
  auto files = records(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    auto bytes = direct ? FileListCodec::encode(files) : FileListCodec::encodeGeneric(files);
    benchmark::DoNotOptimize(bytes->data());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_FileListEncode<true>)->Name("BM_FileListEncode/direct")->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FileListEncode<false>)->Name("BM_FileListEncode/generic")->Arg(10'000)->Unit(benchmark::kMillisecond);

template <bool direct>
void BM_FileListDecode(benchmark::State& state) {
  auto bytes = *FileListCodec::encode(records(static_cast<int>(state.range(0))));
  for (auto _ : state) {
    auto files = direct ? FileListCodec::decode(bytes) : FileListCodec::decodeGeneric(bytes);
    if (!std::holds_alternative<std::vector<File>>(files)) state.SkipWithError("the list did not decode");
    benchmark::DoNotOptimize(files);
    // Freeing the records is the caller's cost, not decoding's.
    state.PauseTiming();
    files = std::vector<File>();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_FileListDecode<true>)->Name("BM_FileListDecode/direct")->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FileListDecode<false>)->Name("BM_FileListDecode/generic")->Arg(10'000)->Unit(benchmark::kMillisecond);

}  // namespace
