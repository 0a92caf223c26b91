// nimbrel-library-media: the command of nimbrel-library that decodes pictures and movies
// (thumbnails), which nimbrel-library hands over to it with its own command line.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "backends/desktop/index/DesktopLocations.h"
#include "backends/desktop/index/LibraryIndex.h"
#include "backends/desktop/media/FileMediaReader.h"
#include "backends/desktop/media/ThumbnailCache.h"
#include "library/LibraryArguments.h"

using namespace nimbrel::desktop;
namespace fs = std::filesystem;

namespace {

std::unique_ptr<LibraryIndex> openIndex(const DesktopLocations& l) {
  std::error_code ec;
  fs::create_directories(l.cache, ec);
  auto index = std::make_unique<LibraryIndex>(l.indexPath(), FileMediaReader::shared());
  if (!index->ok()) {
    std::fprintf(stderr, "nimbrel-library: cannot open %s: %s\n", l.indexPath().c_str(), index->error().c_str());
    return nullptr;
  }
  return index;
}

int thumbnails(const DesktopLocations& l) {
  auto index = openIndex(l);
  if (!index) return 1;
  index->scanPhotos({l.pictures, l.videos}, ScanDepth::quick);
  auto rows = index->assets();
  ThumbnailCache cache(l.thumbnails);
  auto start = std::chrono::steady_clock::now();
  unsigned workers = std::max(1u, std::min(4u, std::thread::hardware_concurrency()));
  std::vector<std::thread> threads;
  for (unsigned w = 0; w < workers; ++w) {
    threads.emplace_back([&, w] {
      for (size_t i = w; i < rows.size(); i += workers) {
        for (int box : {128, 256}) cache.thumbnail(rows[i].path, box, rows[i].orientation);
      }
    });
  }
  for (auto& t : threads) t.join();
  double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  auto counts = cache.counts();
  std::printf("thumbnails in %s: %d made, %d already there, %d could not be made, for %zu files in %.3f s\n",
              l.thumbnails.c_str(), counts.made, counts.reused, counts.failed, rows.size(), seconds);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  LibraryArguments arguments;
  if (!LibraryArguments::parse(argc, argv, arguments)) return LibraryArguments::usage(2);
  auto locations = DesktopLocations::resolve(arguments.overrides);
  if (arguments.command == "thumbnails") return thumbnails(locations);
  return LibraryArguments::usage(2);
}
