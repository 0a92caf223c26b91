// The desktop library's speed: indexing generated pictures (first scan and a rescan that finds
// nothing new) and thumbnail requests as scrolling makes them (made, found on disk, remembered).
#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "backends/desktop/DesktopPhotoLibrary.h"
#include "backends/desktop/LibraryIndex.h"
#include "backends/desktop/SampleMedia.h"
#include "backends/desktop/ThumbnailCache.h"

namespace {

namespace fs = std::filesystem;
using namespace nimbrel::desktop;

constexpr int kScanPictures = 5000;
constexpr int kThumbnailPictures = 60;

struct Dataset {
  std::string root;
  std::vector<std::string> photos;  // 1600x1200, for thumbnails
  Dataset() {
    char pattern[] = "/tmp/nimbrel-bench-XXXXXX";
    root = ::mkdtemp(pattern);
    for (int i = 0; i < kScanPictures; ++i) {
      std::string dir = root + "/Pictures/Album " + std::to_string(i / 250);
      if (i % 250 == 0) fs::create_directories(dir);
      SampleExif exif;
      exif.dateTimeOriginal = "2023:06:01 12:" + std::to_string(10 + i / 100 % 50) + ":" + std::to_string(10 + i % 50);
      exif.latitude = 41.9;
      exif.longitude = 12.5;
      writeSampleJpeg(dir + "/IMG_" + std::to_string(i) + ".jpg", 64, 48, exif, static_cast<std::uint32_t>(i));
    }
    fs::create_directories(root + "/Large");
    for (int i = 0; i < kThumbnailPictures; ++i) {
      photos.push_back(root + "/Large/IMG_" + std::to_string(i) + ".jpg");
      writeSampleJpeg(photos.back(), 1600, 1200, {}, static_cast<std::uint32_t>(i));
    }
  }
  ~Dataset() {
    std::error_code ec;
    fs::remove_all(root, ec);
  }
};

Dataset& dataset() {
  static Dataset d;
  return d;
}

void BM_FirstScanOf5000Pictures(benchmark::State& state) {
  auto& d = dataset();
  for (auto _ : state) {
    state.PauseTiming();
    fs::remove_all(d.root + "/index");
    fs::create_directories(d.root + "/index");
    LibraryIndex index(d.root + "/index/library.sqlite3");
    state.ResumeTiming();
    auto report = index.scanPhotos({d.root + "/Pictures"});
    if (report.parsed != kScanPictures) state.SkipWithError("not every picture was read");
  }
  state.SetItemsProcessed(state.iterations() * kScanPictures);
}
BENCHMARK(BM_FirstScanOf5000Pictures)->Unit(benchmark::kMillisecond)->Iterations(2);

void BM_RescanOf5000UnchangedPictures(benchmark::State& state) {
  auto& d = dataset();
  fs::remove_all(d.root + "/index");
  fs::create_directories(d.root + "/index");
  LibraryIndex index(d.root + "/index/library.sqlite3");
  index.scanPhotos({d.root + "/Pictures"});
  for (auto _ : state) {
    auto report = index.scanPhotos({d.root + "/Pictures"});
    if (report.parsed != 0) state.SkipWithError("an unchanged picture was read again");
  }
  state.SetItemsProcessed(state.iterations() * kScanPictures);
}
BENCHMARK(BM_RescanOf5000UnchangedPictures)->Unit(benchmark::kMillisecond);

// A 1600x1200 JPEG to a 256 thumbnail: decoded at 1/4, resized, written with its keys.
void BM_ThumbnailCold(benchmark::State& state) {
  auto& d = dataset();
  size_t i = 0;
  std::string folder = d.root + "/thumbs-cold";
  std::unique_ptr<ThumbnailCache> cache;
  for (auto _ : state) {
    if (i % d.photos.size() == 0) {
      state.PauseTiming();
      fs::remove_all(folder);
      cache = std::make_unique<ThumbnailCache>(folder);
      state.ResumeTiming();
    }
    benchmark::DoNotOptimize(cache->thumbnail(d.photos[i++ % d.photos.size()], 256));
  }
}
BENCHMARK(BM_ThumbnailCold)->Unit(benchmark::kMicrosecond);

// Made by an earlier run or another program: checked from the PNG's keys.
void BM_ThumbnailWarmOnDisk(benchmark::State& state) {
  auto& d = dataset();
  std::string folder = d.root + "/thumbs-warm";
  {
    ThumbnailCache fill(folder);
    for (const auto& p : d.photos) fill.thumbnail(p, 256);
  }
  size_t i = 0;
  std::unique_ptr<ThumbnailCache> cache;
  for (auto _ : state) {
    if (i % d.photos.size() == 0) {
      state.PauseTiming();
      cache = std::make_unique<ThumbnailCache>(folder);
      state.ResumeTiming();
    }
    benchmark::DoNotOptimize(cache->thumbnail(d.photos[i++ % d.photos.size()], 256));
  }
}
BENCHMARK(BM_ThumbnailWarmOnDisk)->Unit(benchmark::kMicrosecond);

// Asked again while scrolling back: remembered in the process.
void BM_ThumbnailRemembered(benchmark::State& state) {
  auto& d = dataset();
  ThumbnailCache cache(d.root + "/thumbs-warm");
  for (const auto& p : d.photos) cache.thumbnail(p, 256);
  size_t i = 0;
  for (auto _ : state) benchmark::DoNotOptimize(cache.thumbnail(d.photos[i++ % d.photos.size()], 256));
}
BENCHMARK(BM_ThumbnailRemembered)->Unit(benchmark::kMicrosecond);

}  // namespace
