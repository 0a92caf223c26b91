// The desktop library against the tools a user would otherwise reach for, on 20,000 generated
// pictures with EXIF dates: the first index against `find` + `exiv2`, a rescan with nothing changed
// against a bare `find`, thumbnails of 12-megapixel JPEGs against `vipsthumbnail -s 256`, and the
// memory a browse of the whole library takes. The tools' runs are timed the same way, in the same
// process, so the ratios hold on any machine; a missing tool skips its row.
#include <benchmark/benchmark.h>
#include <stdlib.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "backends/desktop/DesktopPhotoLibrary.h"
#include "backends/desktop/media/FileMediaReader.h"
#include "backends/desktop/index/LibraryIndex.h"
#include "backends/desktop/media/SampleMedia.h"
#include "backends/desktop/media/ThumbnailCache.h"
#include "platform/foundation/ManualRunLoop.h"
#include "platform/photos/PHImageManager.h"

namespace {

namespace fs = std::filesystem;
using namespace nimbrel::desktop;

constexpr int kPictures = 20000;
constexpr int kLargePictures = 6;  // 4000x3000

std::string shellQuote(const std::string& text) {
  std::string quoted = "'";
  for (char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

bool hasTool(const char* name) {
  return std::system(("command -v " + std::string(name) + " >/dev/null 2>&1").c_str()) == 0;
}

// NIMBREL_BENCH_DATA=DIR keeps the generated pictures in DIR between runs (made once).
struct Dataset {
  std::string root;
  std::vector<std::string> large;
  bool keep = false;
  Dataset() {
    if (const char* kept = std::getenv("NIMBREL_BENCH_DATA"); kept && *kept) {
      root = kept;
      keep = true;
    } else {
      char pattern[] = "/tmp/nimbrel-bench-XXXXXX";
      root = ::mkdtemp(pattern);
    }
    for (int i = 0; i < kLargePictures; ++i) large.push_back(root + "/Large/IMG_" + std::to_string(i) + ".jpg");
    if (keep && fs::exists(root + "/complete")) return;
    for (int i = 0; i < kPictures; ++i) {
      std::string dir = root + "/Pictures/Album " + std::to_string(i / 250);
      if (i % 250 == 0) fs::create_directories(dir);
      SampleExif exif;
      char date[32];
      std::snprintf(date, sizeof date, "20%02d:%02d:%02d %02d:%02d:%02d", 10 + i % 14, 1 + i % 12, 1 + i % 28,
                    i % 24, i % 60, (i * 7) % 60);
      exif.dateTimeOriginal = date;
      exif.orientation = 1 + i % 8;
      exif.latitude = 41.9 + (i % 100) * 0.01;
      exif.longitude = 12.5;
      writeSampleJpeg(dir + "/IMG_" + std::to_string(i) + ".jpg", 160, 120, exif, static_cast<std::uint32_t>(i));
    }
    fs::create_directories(root + "/Large");
    for (int i = 0; i < kLargePictures; ++i) {
      SampleExif exif;
      exif.dateTimeOriginal = "2024:05:01 10:00:00";
      writeSampleJpeg(large[i], 4000, 3000, exif, static_cast<std::uint32_t>(i));
    }
    std::ofstream(root + "/complete") << "";
  }
  ~Dataset() {
    std::error_code ec;
    if (!keep) fs::remove_all(root, ec);
  }
  std::string pictures() const { return root + "/Pictures"; }
};

Dataset& dataset() {
  static Dataset d;
  return d;
}

void freshIndexFolder(const Dataset& d) {
  fs::remove_all(d.root + "/index");
  fs::create_directories(d.root + "/index");
}

// Reads every picture's metadata into a new index.
void BM_Index_FirstScan(benchmark::State& state) {
  auto& d = dataset();
  for (auto _ : state) {
    state.PauseTiming();
    freshIndexFolder(d);
    LibraryIndex index(d.root + "/index/library.sqlite3", FileMediaReader::shared());
    state.ResumeTiming();
    auto report = index.scanPhotos({d.pictures()});
    if (report.parsed != kPictures) state.SkipWithError("not every picture was read");
  }
  state.SetItemsProcessed(state.iterations() * kPictures);
}
BENCHMARK(BM_Index_FirstScan)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();

// What a first index is measured against: every file found, its EXIF read by exiv2.
void BM_Index_FindPlusExiv2(benchmark::State& state) {
  if (!hasTool("exiv2")) return state.SkipWithError("exiv2 is not installed");
  auto& d = dataset();
  std::string command = "find " + shellQuote(d.pictures()) + " -type f -print0 | xargs -0 exiv2 -q -pt >/dev/null 2>&1";
  for (auto _ : state) benchmark::DoNotOptimize(std::system(command.c_str()));
  state.SetItemsProcessed(state.iterations() * kPictures);
}
BENCHMARK(BM_Index_FindPlusExiv2)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();

// A rescan that finds nothing new, as at a start of the program: the index opened, every folder's
// times compared with the last walk's, no folder read again.
void BM_Index_RescanUnchanged(benchmark::State& state) {
  auto& d = dataset();
  freshIndexFolder(d);
  LibraryIndex(d.root + "/index/library.sqlite3", FileMediaReader::shared()).scanPhotos({d.pictures()});
  for (auto _ : state) {
    LibraryIndex index(d.root + "/index/library.sqlite3", FileMediaReader::shared());
    auto report = index.scanPhotos({d.pictures()}, ScanDepth::quick);
    if (report.parsed != 0 || report.unchanged != kPictures) state.SkipWithError("the rescan did not see the library whole");
  }
  state.SetItemsProcessed(state.iterations() * kPictures);
}
BENCHMARK(BM_Index_RescanUnchanged)->Unit(benchmark::kMillisecond)->UseRealTime();

// The check that follows in the background: every file's size and time compared.
void BM_Index_RescanUnchangedFull(benchmark::State& state) {
  auto& d = dataset();
  freshIndexFolder(d);
  LibraryIndex index(d.root + "/index/library.sqlite3", FileMediaReader::shared());
  index.scanPhotos({d.pictures()});
  for (auto _ : state) {
    auto report = index.scanPhotos({d.pictures()}, ScanDepth::full);
    if (report.parsed != 0) state.SkipWithError("an unchanged picture was read again");
  }
  state.SetItemsProcessed(state.iterations() * kPictures);
}
BENCHMARK(BM_Index_RescanUnchangedFull)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_Index_BareFind(benchmark::State& state) {
  auto& d = dataset();
  std::string command = "find " + shellQuote(d.pictures()) + " -type f >/dev/null";
  for (auto _ : state) benchmark::DoNotOptimize(std::system(command.c_str()));
  state.SetItemsProcessed(state.iterations() * kPictures);
}
BENCHMARK(BM_Index_BareFind)->Unit(benchmark::kMillisecond)->UseRealTime();

// A 12-megapixel JPEG to a 256 thumbnail in the shared cache (decoded at reduced scale, turned,
// resized, written as PNG with its keys). Per picture.
void BM_Thumbnail12MP_Cold(benchmark::State& state) {
  auto& d = dataset();
  std::string folder = d.root + "/thumbs";
  for (auto _ : state) {
    state.PauseTiming();
    fs::remove_all(folder);
    ThumbnailCache cache(folder);
    state.ResumeTiming();
    for (const auto& picture : d.large) {
      if (!cache.thumbnail(picture, 256)) state.SkipWithError("no thumbnail");
    }
  }
  state.SetItemsProcessed(state.iterations() * kLargePictures);
  // Seconds per picture.
  state.counters["per_picture"] = benchmark::Counter(static_cast<double>(state.iterations() * kLargePictures),
                                                     benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_Thumbnail12MP_Cold)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_Thumbnail12MP_Vipsthumbnail(benchmark::State& state) {
  if (!hasTool("vipsthumbnail")) return state.SkipWithError("vipsthumbnail is not installed");
  auto& d = dataset();
  std::string out = d.root + "/vips";
  fs::create_directories(out);
  std::string command = "vipsthumbnail -s 256 -o " + shellQuote(out + "/%s.png");
  for (const auto& picture : d.large) command += " " + shellQuote(picture);
  for (auto _ : state) benchmark::DoNotOptimize(std::system(command.c_str()));
  state.SetItemsProcessed(state.iterations() * kLargePictures);
  // Seconds per picture.
  state.counters["per_picture"] = benchmark::Counter(static_cast<double>(state.iterations() * kLargePictures),
                                                     benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_Thumbnail12MP_Vipsthumbnail)->Unit(benchmark::kMillisecond)->UseRealTime();

// Resident memory of this process, in MB.
double residentMB() {
  std::ifstream statm("/proc/self/statm");
  long pages = 0, resident = 0;
  statm >> pages >> resident;
  return static_cast<double>(resident) * static_cast<double>(::sysconf(_SC_PAGESIZE)) / (1024.0 * 1024.0);
}

// The library open over 20,000 indexed pictures, every asset listed and a screenful of
// thumbnails asked for, as the album level and an album's grid do: the memory it holds.
void BM_Browse_Memory(benchmark::State& state) {
  auto& d = dataset();
  freshIndexFolder(d);
  {
    LibraryIndex index(d.root + "/index/library.sqlite3", FileMediaReader::shared());
    index.scanPhotos({d.pictures()});
  }
  double before = residentMB(), held = 0;
  for (auto _ : state) {
    ManualRunLoop loop(0);
    DesktopPhotoLibrary::Options options;
    options.indexPath = d.root + "/index/library.sqlite3";
    options.pictures = d.pictures();
    options.videos = d.root + "/Videos";
    options.thumbnails = d.root + "/thumbs-browse";
    options.trash = d.root + "/Trash";
    options.watch = false;
    auto library = std::make_shared<DesktopPhotoLibrary>(options);
    library->waitUntilIdle(120);
    loop.runUntilIdle();
    auto assets = library->assets();
    auto albums = library->collections();
    if (assets.size() != static_cast<size_t>(kPictures)) state.SkipWithError("the library is not whole");
    for (size_t i = 0; i < 60 && i < assets.size(); ++i) {
      benchmark::DoNotOptimize(library->image(*assets[i], {256, 256}, true));
    }
    held = residentMB() - before;
    benchmark::DoNotOptimize(albums);
  }
  state.counters["held_MB"] = held;
  state.counters["resident_MB"] = residentMB();
}
BENCHMARK(BM_Browse_Memory)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();

}  // namespace
