// nimbrel-demo-library HOME: writes a small sample library under HOME (Pictures, Videos, Music and
// the app's documents), every file made here: JPEGs with EXIF dates and places, a live photo,
// a panorama, a selfie, short movies, tagged songs with covers, a few documents.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "backends/desktop/media/SampleMedia.h"

using namespace nimbrel::desktop;
namespace fs = std::filesystem;

namespace {

bool photo(const std::string& path, int w, int h, const char* when, double lat, double lon, std::uint32_t seed,
           int orientation = 0, const char* lens = nullptr) {
  SampleExif exif;
  exif.dateTimeOriginal = when;
  if (lat != 0 || lon != 0) {
    exif.latitude = lat;
    exif.longitude = lon;
  }
  exif.orientation = orientation;
  if (lens) exif.lensModel = lens;
  bool ok = writeSampleJpeg(path, w, h, exif, seed);
  if (!ok) std::fprintf(stderr, "could not write %s\n", path.c_str());
  return ok;
}

bool movie(const std::string& path, double seconds, const char* when, const char* where) {
  SampleMovie m;
  m.width = 320;
  m.height = 240;
  m.seconds = seconds;
  m.creationTime = when;
  if (where) m.location = where;
  bool ok = writeSampleMovie(path, m);
  if (!ok) std::fprintf(stderr, "could not write %s\n", path.c_str());
  return ok;
}

bool song(const std::string& path, const char* title, const char* artist, const char* album, double seconds,
          const std::string& cover) {
  SampleSong s;
  s.title = title;
  s.artist = artist;
  s.album = album;
  s.seconds = seconds;
  if (!cover.empty()) s.artworkJpeg = cover;
  bool ok = writeSampleSong(path, s);
  if (!ok) std::fprintf(stderr, "could not write %s\n", path.c_str());
  return ok;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: nimbrel-demo-library HOME\n");
    return 2;
  }
  std::string home = fs::absolute(argv[1]).string();
  std::string pictures = home + "/Pictures", videos = home + "/Videos", music = home + "/Music";
  std::string docs = home + "/.local/share/nimbrel/Documents/Nimbrel/importedFiles";
  for (const auto& d : {pictures + "/Rome 2023", pictures + "/Family", pictures + "/Tokyo", videos + "/Trips",
                        music + "/Ana Lua", docs, home + "/covers"}) {
    fs::create_directories(d);
  }
  bool ok = true;
  ok &= photo(pictures + "/Rome 2023/IMG_2001.JPG", 1600, 1200, "2023:06:12 09:14:00", 41.8902, 12.4922, 1);
  ok &= photo(pictures + "/Rome 2023/IMG_2002.JPG", 1600, 1200, "2023:06:12 11:40:00", 41.9009, 12.4833, 2);
  ok &= photo(pictures + "/Rome 2023/IMG_2003.JPG", 1200, 1600, "2023:06:13 18:05:00", 41.9029, 12.4534, 3, 6);
  ok &= photo(pictures + "/Family/IMG_3101.JPG", 1200, 900, "2024:01:01 12:00:00", 48.8566, 2.3522, 4);
  ok &= photo(pictures + "/Family/IMG_3102.JPG", 900, 1200, "2024:01:01 12:05:00", 48.8566, 2.3522, 5, 0,
              "iPhone 14 front camera 2.69mm f/1.9");
  ok &= photo(pictures + "/Tokyo/IMG_4001.JPG", 1600, 1200, "2024:04:03 07:30:00", 35.6586, 139.7454, 6);
  ok &= photo(pictures + "/Tokyo/PANO_4002.JPG", 2400, 800, "2024:04:03 08:00:00", 35.7101, 139.8107, 7);
  ok &= photo(pictures + "/IMG_5001.JPG", 1200, 900, "2024:05:20 16:45:00", 0, 0, 8);
  ok &= movie(pictures + "/IMG_5001.MOV", 2, "2024-05-20T16:45:00Z", nullptr);  // the live photo's movie
  ok &= movie(videos + "/Trips/harbour.mov", 3, "2024-04-04T10:00:00Z", "+35.6762+139.6503/");
  ok &= movie(videos + "/birthday.mp4", 2, "2024-01-01T13:00:00Z", "+48.8566+002.3522/");
  std::string coverA = home + "/covers/ana.jpg", coverB = home + "/covers/north.jpg";
  ok &= writeSampleJpeg(coverA, 300, 300, {}, 9);
  ok &= writeSampleJpeg(coverB, 300, 300, {}, 10);
  ok &= song(music + "/Ana Lua/01 Morning Tide.mp3", "Morning Tide", "Ana Lua", "Harbour Lights", 4, coverA);
  ok &= song(music + "/Ana Lua/02 Salt Wind.mp3", "Salt Wind", "Ana Lua", "Harbour Lights", 3, coverA);
  ok &= song(music + "/North Field - Pines.mp3", "Pines", "North Field", "Evergreen", 5, coverB);
  std::ofstream(docs + "/notes.txt") << "Things to pack:\n- camera\n- charger\n";
  std::ofstream(docs + "/budget.csv") << "item,cost\nflights,420\nhotel,610\n";
  std::ofstream(docs + "/itinerary.pdf") << "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
                                            "2 0 obj<</Type/Pages/Kids[3 0 R]/Count 1>>endobj\n"
                                            "3 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 200]>>endobj\n"
                                            "trailer<</Root 1 0 R>>\n%%EOF\n";
  fs::remove_all(home + "/covers");
  std::printf("sample library written under %s\n", home.c_str());
  return ok ? 0 : 1;
}
