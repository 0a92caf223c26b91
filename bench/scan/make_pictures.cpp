// nimbrel-bench-pictures DIR COUNT: COUNT 640 × 480 JPEGs with EXIF dates in 40 folders under DIR,
// each with its own date. One picture a folder is encoded; the others are its bytes with the date
// rewritten in place (the field has a fixed width), so that a library of 20,000 takes seconds.
#include <cstdio>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "backends/desktop/media/SampleMedia.h"

namespace fs = std::filesystem;
using namespace nimbrel::desktop;

namespace {

constexpr int kFolders = 40;
constexpr char kBaseDate[] = "2020:01:01 00:00:00";

std::string exifDate(long index) {
  std::time_t when = 1577836800 + index * 3607;  // from 2020, an hour and a bit apart
  std::tm tm{};
  gmtime_r(&when, &tm);
  char text[32];
  std::strftime(text, sizeof text, "%Y:%m:%d %H:%M:%S", &tm);
  return text;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: nimbrel-bench-pictures DIR COUNT\n");
    return 2;
  }
  fs::path root = argv[1];
  long count = std::atol(argv[2]);
  for (int f = 0; f < kFolders && f < count; ++f) {
    char name[32];
    std::snprintf(name, sizeof name, "Folder %02d", f);
    fs::path folder = root / name;
    fs::create_directories(folder);
    fs::path base = folder / "IMG_base.jpg";
    SampleExif exif;
    exif.dateTimeOriginal = kBaseDate;
    if (!writeSampleJpeg(base, 640, 480, exif, static_cast<std::uint32_t>(f + 1))) {
      std::fprintf(stderr, "cannot write %s\n", base.c_str());
      return 1;
    }
    std::ifstream in(base, std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(in), {}};
    fs::remove(base);
    std::vector<size_t> dates;
    for (size_t at = bytes.find(kBaseDate); at != std::string::npos; at = bytes.find(kBaseDate, at + 1)) {
      dates.push_back(at);
    }
    if (dates.empty()) {
      std::fprintf(stderr, "no EXIF date in %s\n", base.c_str());
      return 1;
    }
    for (long i = f; i < count; i += kFolders) {
      std::string date = exifDate(i);
      for (size_t at : dates) bytes.replace(at, date.size(), date);
      char file[32];
      std::snprintf(file, sizeof file, "IMG_%05ld.jpg", i);
      std::ofstream(folder / file, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
  }
  return 0;
}
