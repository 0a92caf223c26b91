#include "backends/desktop/DesktopPlatform.h"

#include <sys/statvfs.h>
#include <unistd.h>

#include <chrono>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "backends/desktop/DemoAdNetwork.h"
#include "backends/desktop/DesktopAssetExporter.h"
#include "backends/desktop/DesktopDocumentPicker.h"
#include "backends/desktop/DesktopImageDecoder.h"
#include "backends/desktop/DesktopMusicLibrary.h"
#include "backends/desktop/DesktopOpener.h"
#include "backends/desktop/DesktopShareActivities.h"
#include "backends/desktop/ShareFolderSweep.h"
#include "backends/desktop/index/DesktopPermissions.h"
#include "backends/desktop/DesktopPhotoLibrary.h"
#include "backends/desktop/DesktopPlaces.h"
#include "backends/desktop/index/PreferencesFile.h"
#include "platform/PlatformState.h"
#include "platform/av/MediaDurations.h"
#include "platform/corelocation/CLGeocoder.h"
#include "platform/foundation/Diagnostics.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FatalError.h"
#include "platform/foundation/NSLocale.h"
#include "platform/foundation/NSPathUtilities.h"
#include "platform/foundation/NSTimeZone.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/foundation/VolumeInfoSource.h"
#include "platform/mediaplayer/MediaLibrarySource.h"
#include "platform/photos/PhotoLibrarySource.h"
#include "platform/services/PermissionAuthority.h"
#include "platform/uikit/ImageDecoder.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UserNotice.h"

namespace nimbrel::desktop {

namespace fs = std::filesystem;

namespace {

// The volume that holds the app home; a path on another volume is asked about itself.
class HomeVolume : public VolumeInfoSource {
 public:
  explicit HomeVolume(std::string home) : home_(std::move(home)) {}
  Figures figures(const std::string& path) const override {
    struct statvfs st;
    if (::statvfs(path.empty() ? home_.c_str() : path.c_str(), &st) != 0 && ::statvfs(home_.c_str(), &st) != 0) {
      return {};
    }
    Figures f;
    f.size = static_cast<std::int64_t>(st.f_blocks) * static_cast<std::int64_t>(st.f_frsize);
    f.free = static_cast<std::int64_t>(st.f_bavail) * static_cast<std::int64_t>(st.f_frsize);
    f.importantAvailable = f.free;
    return f;
  }

 private:
  std::string home_;
};

}  // namespace

double DesktopPlatform::wallClockSince2001() {
  double unix = std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
  return Date::fromUnix(unix).timeIntervalSinceReferenceDate;
}

std::string DesktopPlatform::localeFromEnvironment() {
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* v = std::getenv(name);
    if (!v || !*v) continue;
    std::string value = v;
    value = value.substr(0, value.find_first_of(".@"));
    if (value == "C" || value == "POSIX" || value.empty()) return "en_US";
    return value;
  }
  return "en_US";
}

std::string DesktopPlatform::timeZoneFromEnvironment() {
  auto fromPath = [](const std::string& path) -> std::string {
    auto at = path.find("zoneinfo/");
    return at == std::string::npos ? std::string() : path.substr(at + 9);
  };
  if (const char* tz = std::getenv("TZ"); tz && *tz) {
    std::string value = tz[0] == ':' ? tz + 1 : tz;
    if (!value.empty() && value[0] == '/') {
      if (auto name = fromPath(value); !name.empty()) return name;
    } else if (!value.empty()) {
      return value;
    }
  }
  char target[PATH_MAX];
  ssize_t n = ::readlink("/etc/localtime", target, sizeof target - 1);
  if (n > 0) {
    target[n] = '\0';
    if (auto name = fromPath(target); !name.empty()) return name;
  }
  std::ifstream file("/etc/timezone");
  std::string line;
  if (std::getline(file, line) && !line.empty()) return line;
  return "UTC";
}

DesktopPlatform::DesktopPlatform() : DesktopPlatform(Options()) {}

DesktopPlatform::DesktopPlatform(Options options)
    : loop_(options.runLoop == RunLoopChoice::own ? std::make_unique<ManualRunLoop>(wallClockSince2001()) : nullptr) {
  if (!loop_ && !RunLoop::hasCurrent()) fatalError("the desktop platform was asked to use a run loop, but none is installed");
  resetPlatformState();
  locations_ = DesktopLocations::resolve(options.locations);
  std::error_code ec;
  fs::create_directories(locations_.documents, ec);
  fs::create_directories(locations_.state, ec);
  Diagnostics::setLogFile(logPath());
  setApplicationHomeDirectory(locations_.appHome);
  NSLocale::setCurrentLocaleIdentifier(localeFromEnvironment());
  NSTimeZone::setLocalTimeZoneName(timeZoneFromEnvironment());
  UIDevice::currentDevice().configure(options.idiom, "17.0");

  PermissionAuthority::install(std::make_shared<DesktopPermissions>(locations_.permissionsPath()));
  auto preferences = std::make_shared<PreferencesFile>(locations_.preferences);
  NSUserDefaults::installStandard(preferences);
  if (!preferences->keptAside().empty()) {
    UserNotice::post("Nimbrel could not read its settings and started afresh. The old file was kept as " +
                     preferences->keptAside() + ".");
  }

  DesktopPhotoLibrary::Options photoOptions;
  photoOptions.indexPath = locations_.indexPath();
  photoOptions.pictures = locations_.pictures;
  photoOptions.videos = locations_.videos;
  photoOptions.thumbnails = locations_.thumbnails;
  photoOptions.trash = locations_.trash();
  photoOptions.watch = options.watch;
  photoOptions.scanAtStart = options.scan;
  photoOptions.prefillThumbnails = options.scan ? 256 : 0;
  photos_ = std::make_shared<DesktopPhotoLibrary>(photoOptions);
  PhotoLibrarySource::install(photos_);

  music_ = std::make_shared<DesktopMusicLibrary>(locations_.indexPath(), locations_.music, false);
  MediaLibrarySource::install(music_);
  if (!options.storedLists.keys.empty()) {
    cleaner_ = std::make_shared<StoredListCleaner>(locations_.preferences, std::move(options.storedLists));
    auto kept = cleaner_->clean().keptAside;
    if (!kept.empty()) {
      UserNotice::post("Nimbrel could not read its list of recent or favourite files and set it aside. "
                       "The old list was kept in " + kept + ".");
    }
    std::weak_ptr<StoredListCleaner> weak = cleaner_;
    photos_->changed().observe([weak] {
      if (auto cleaner = weak.lock()) cleaner->clean();
    });
  }
  auto covers = std::make_shared<DesktopImageDecoder>(locations_.cache + "/covers");
  if (options.scan) {
    std::weak_ptr<DesktopMusicLibrary> weak = music_;
    std::weak_ptr<StoredListCleaner> weakCleaner = cleaner_;
    DispatchQueue::global(QualityOfService::utility).async([weak, weakCleaner, covers] {
      std::vector<std::shared_ptr<const MPMediaItemRecord>> songs;
      if (auto music = weak.lock()) {
        if (music->refresh().removed > 0) {
          DispatchQueue::main().async([weakCleaner] {
            if (auto cleaner = weakCleaner.lock()) cleaner->clean();
          });
        }
        songs = music->songs();
      }
      // Covers are made while nobody waits, so that a player's first showing reads a small file.
      for (const auto& song : songs) {
        if (weak.expired()) return;
        if (song->hasArtwork) covers->prepareCover(song->backingPath);
      }
    });
  }
  GeocoderSource::install(std::make_shared<DesktopGeocoder>());
  MediaDurations::install(std::make_shared<DesktopMediaDurations>(music_));
  ImageDecoder::install(covers);
  AssetExporter::install(std::make_shared<DesktopAssetExporter>());
  VolumeInfoSource::install(std::make_shared<HomeVolume>(locations_.appHome));
  DocumentPickerSource::install(std::make_shared<DesktopDocumentPicker>());
  auto shareOptions = DesktopShareActivities::defaultOptions();
  ShareFolderSweep::removeOld(shareOptions.temporaryFolder, std::chrono::system_clock::now());
  ShareActivities::install(std::make_shared<DesktopShareActivities>(options.shareSurface, std::move(shareOptions)));
  DemoAdNetwork::install(DemoAdNetwork::fillFromText(std::getenv("NIMBREL_ADS")));
  UIApplication::sharedApplication().setURLOpener([](const URL& url) { return openWithDesktop(url); });
}

DesktopPlatform::~DesktopPlatform() {
  NSUserDefaults::standardUserDefaults().flush();
  Diagnostics::setLogFile("");
  resetPlatformState();
}

ManualRunLoop& DesktopPlatform::runLoop() {
  if (!loop_) fatalError("the desktop platform runs on the installed run loop, not a manual one");
  return *loop_;
}

}  // namespace nimbrel::desktop
