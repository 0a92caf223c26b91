// nimbrel-library: the desktop library's index, thumbnails and permission answers from a terminal,
// with the same folders and environment as the program.
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "backends/desktop/index/DesktopLocations.h"
#include "backends/desktop/index/DesktopPermissions.h"
#include "backends/desktop/index/LazyMediaReader.h"
#include "backends/desktop/index/LibraryIndex.h"
#include "library/LibraryArguments.h"
#include "platform/photos/PHTypes.h"

using namespace nimbrel::desktop;
namespace fs = std::filesystem;

namespace {

int usage(int status) { return LibraryArguments::usage(status); }

const char* show(const std::string& path) {
  return path.empty() ? "(none)" : path.c_str();
}

std::unique_ptr<LibraryIndex> openIndex(const DesktopLocations& l) {
  std::error_code ec;
  fs::create_directories(l.cache, ec);
  auto index = std::make_unique<LibraryIndex>(l.indexPath());
  if (!index->ok()) {
    std::fprintf(stderr, "nimbrel-library: cannot open %s: %s\n", l.indexPath().c_str(), index->error().c_str());
    return nullptr;
  }
  return index;
}

// A file installed beside the program, or in its libexec folder when installed.
std::string besideProgram(const char* argv0, const char* name) {
  std::error_code ec;
  fs::path self = fs::read_symlink("/proc/self/exe", ec);
  if (ec) self = fs::absolute(argv0);
  for (const fs::path& candidate : {self.parent_path() / name, self.parent_path() / NIMBREL_LIBEXEC_RELATIVE / name}) {
    if (::access(candidate.c_str(), R_OK) == 0) return candidate;
  }
  return self.parent_path() / name;
}

// Making thumbnails decodes pictures and movies: a helper does it, so that the other commands
// start without the codec libraries.
int runMediaHelper(char** argv) {
  std::string helper = besideProgram(argv[0], "nimbrel-library-media");
  ::execv(helper.c_str(), argv);
  std::fprintf(stderr, "nimbrel-library: cannot run %s: %s\n", helper.c_str(), std::strerror(errno));
  return 1;
}

void printAlbums(LibraryIndex& index) {
  auto perFolder = index.assetCountsByFolder();
  for (const auto& album : index.albums()) {
    std::printf("  album %-30s %d\n", album.folder.c_str(), perFolder[album.folder]);
  }
}

// Folders whose times have not moved are taken as they were unless `full` asks for every file.
// The codec libraries are loaded only when a file is new or changed.
int scan(const DesktopLocations& l, bool full, const char* argv0) {
  std::error_code ec;
  fs::create_directories(l.cache, ec);
  auto reader = std::make_shared<LazyMediaReader>(besideProgram(argv0, "nimbrel-media.so"), [](const std::string& why) {
    // Answers of a reader that is not there would be recorded as unreadable files.
    std::fprintf(stderr, "nimbrel-library: %s\n", why.c_str());
    std::fflush(stdout);
    std::_Exit(1);
  });
  LibraryIndex index(l.indexPath(), reader);
  if (!index.ok()) {
    std::fprintf(stderr, "nimbrel-library: cannot open %s: %s\n", l.indexPath().c_str(), index.error().c_str());
    return 1;
  }
  std::printf("Pictures: %s\nVideos:   %s\nMusic:    %s\n", show(l.pictures), show(l.videos), show(l.music));
  // A first index or a full scan reads files for sure.
  if (full || index.assetCountsByFolder().empty()) reader->loadInBackground();
  auto photos = index.scanPhotos({l.pictures, l.videos}, full ? ScanDepth::full : ScanDepth::quick);
  auto music = l.music.empty() ? ScanReport{} : index.scanMusic(l.music);
  std::printf("photos and videos: %d images, %d videos, %d albums (%d read, %d unchanged, %d new, %d moved, %d gone) in %.3f s\n",
              photos.images, photos.videos, photos.albums, photos.parsed, photos.unchanged, photos.added, photos.moved,
              photos.removed, photos.seconds);
  printAlbums(index);
  std::printf("music: %d songs (%d read, %d unchanged, %d gone) in %.3f s\n", music.songs, music.parsed, music.unchanged,
              music.removed, music.seconds);
  std::printf("total %.3f s\n", photos.seconds + music.seconds);
  return 0;
}

int status(const DesktopLocations& l) {
  std::printf("app home:     %s\npreferences:  %s\nindex:        %s\nthumbnails:   %s\npermissions:  %s\ntrash:        %s\n",
              l.appHome.c_str(), l.preferences.c_str(), l.indexPath().c_str(), l.thumbnails.c_str(),
              l.permissionsPath().c_str(), l.trash().c_str());
  std::printf("Pictures:     %s\nVideos:       %s\nMusic:        %s\n", show(l.pictures), show(l.videos), show(l.music));
  if (!fs::exists(l.indexPath())) {
    std::printf("no index yet: run `nimbrel-library scan`\n");
    return 0;
  }
  auto index = openIndex(l);
  if (!index) return 1;
  int images = 0, videos = 0, favourites = 0;
  for (const auto& a : index->assets()) {
    (a.kind == static_cast<int>(PHAssetMediaType::video) ? videos : images)++;
    favourites += a.favourite;
  }
  std::printf("indexed: %d images, %d videos, %zu albums, %d favourites, %zu songs\n", images, videos,
              index->albums().size(), favourites, index->songs().size());
  return 0;
}

int permissions(const DesktopLocations& l, int argc, char** argv, int at) {
  using Kind = PermissionAuthority::Kind;
  if (at >= argc) {
    DesktopPermissions kept(l.permissionsPath());
    for (Kind k : {Kind::photos, Kind::music}) {
      int s = kept.status(k);
      const char* word = s == 0 ? "not asked" : s == DesktopPermissions::allowedStatus(k) ? "allowed" : "refused";
      std::printf("%-9s %s (%d)\n", DesktopPermissions::name(k), word, s);
    }
    std::printf("%-9s restricted (%d): nothing on the desktop tracks, so it is never asked\n",
                DesktopPermissions::name(Kind::tracking), DesktopPermissions::kTrackingStatus);
    return 0;
  }
  if (at + 2 != argc) return usage(2);
  std::string verb = argv[at];
  auto kind = DesktopPermissions::kindNamed(argv[at + 1]);
  if (!kind) return usage(2);
  if (*kind == Kind::tracking) {
    std::fprintf(stderr, "nimbrel-library: tracking is never asked on the desktop; it stays restricted\n");
    return 2;
  }
  std::optional<int> value;
  if (verb == "allow") {
    value = DesktopPermissions::allowedStatus(*kind);
  } else if (verb == "deny") {
    value = DesktopPermissions::refusedStatus(*kind);
  } else if (verb != "reset") {
    return usage(2);
  }
  if (!DesktopPermissions::setStatus(l.permissionsPath(), *kind, value)) {
    std::fprintf(stderr, "nimbrel-library: cannot write %s\n", l.permissionsPath().c_str());
    return 1;
  }
  std::printf("%s: %s\n", argv[at + 1], verb == "reset" ? "will be asked again" : verb == "allow" ? "allowed" : "refused");
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return usage(2);
  std::string command = argv[1];
  if (command == "--help" || command == "-h") {
    usage(0);
    std::printf("\nThe desktop library's index, thumbnails and permission answers, with the program's folders.\n"
                "See nimbrel-library(1).\n");
    return 0;
  }
  if (command == "--version") {
    std::printf("nimbrel-library %s\n", NIMBREL_VERSION);
    return 0;
  }
  if (command == "thumbnails") return runMediaHelper(argv);
  LibraryArguments arguments;
  if (!LibraryArguments::parse(argc, argv, arguments)) return usage(2);
  auto locations = DesktopLocations::resolve(arguments.overrides);
  if (command == "scan") return scan(locations, arguments.full, argv[0]);
  if (command == "status") return status(locations);
  if (command == "permissions") return permissions(locations, argc, argv, 2);
  return usage(2);
}
