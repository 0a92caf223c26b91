// media_seeds DIR: writes the media reader fuzzer's seeds with the project's own sample writers,
// each small and with every field the readers look at, prefixed with the byte that picks the
// file's extension in media_reader_fuzzer.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "backends/desktop/media/SampleMedia.h"

using namespace nimbrel::desktop;
namespace fs = std::filesystem;

namespace {

// The fuzzer's extension list, by position.
enum Kind : char { jpg = 0, mov = 3, mp4 = 4, mp3 = 5, flac = 6, m4a = 7, ogg = 8, exifDate = 9, iso6709 = 10 };

bool keep(const fs::path& dir, const std::string& name, Kind kind, const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  if (bytes.empty()) {
    std::fprintf(stderr, "media_seeds: could not make %s\n", name.c_str());
    return false;
  }
  std::ofstream out(dir / name, std::ios::binary);
  out.put(kind);
  out << bytes;
  return true;
}

bool text(const fs::path& dir, const std::string& name, Kind kind, const std::string& body) {
  std::ofstream out(dir / name, std::ios::binary);
  out.put(kind);
  out << body;
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: media_seeds DIR\n");
    return 2;
  }
  fs::path dir = argv[1];
  fs::create_directories(dir);
  fs::path work = fs::temp_directory_path() / "nimbrel-media-seeds";
  fs::create_directories(work);
  auto at = [&](const char* name) { return (work / name).string(); };
  bool ok = true;

  SampleExif full;
  full.dateTimeOriginal = "2023:06:12 09:14:00";
  full.offsetTimeOriginal = "+02:00";
  full.orientation = 6;
  full.latitude = 41.8902;
  full.longitude = -12.4922;
  full.lensModel = "iPhone 14 front camera 2.69mm f/1.9";
  full.panoramaProjection = "equirectangular";
  ok &= writeSampleJpeg(at("full.jpg"), 32, 24, full, 1) && keep(dir, "exif-full.bin", jpg, at("full.jpg"));
  ok &= writeSampleJpeg(at("bare.jpg"), 16, 16, {}, 2) && keep(dir, "jpeg-bare.bin", jpg, at("bare.jpg"));
  ok &= writeSampleJpeg(at("cover.jpg"), 16, 16, {}, 3);

  SampleMovie movie;
  movie.width = 32;
  movie.height = 24;
  movie.seconds = 0.2;
  movie.creationTime = "2024-04-04T10:00:00Z";
  movie.location = "+35.6762+139.6503/";
  ok &= writeSampleMovie(at("m.mov"), movie) && keep(dir, "movie.bin", mov, at("m.mov"));
  ok &= writeSampleMovie(at("m.mp4"), movie) && keep(dir, "movie-mp4.bin", mp4, at("m.mp4"));

  SampleSong song;
  song.seconds = 0.2;
  song.title = "Morning Tide";
  song.artist = "Ana Lua";
  song.album = "Harbour Lights";
  song.artworkJpeg = at("cover.jpg");
  struct { const char* file; const char* seed; Kind kind; } songs[] = {
      {"s.mp3", "song-mp3.bin", mp3}, {"s.flac", "song-flac.bin", flac},
      {"s.m4a", "song-m4a.bin", m4a}, {"s.ogg", "song-ogg.bin", ogg}};
  for (const auto& s : songs) ok &= writeSampleSong(at(s.file), song) && keep(dir, s.seed, s.kind, at(s.file));

  ok &= text(dir, "exif-date.bin", exifDate, "2019:07:14 18:30:05\n+02:00");
  ok &= text(dir, "iso6709.bin", iso6709, "+48.8584+002.2945+035.000/");
  fs::remove_all(work);
  return ok ? 0 : 1;
}
