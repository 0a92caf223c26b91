#include "backends/sim/SimPlatform.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "backends/sim/SimAppLovinNetwork.h"
#include "backends/sim/SimDocumentPicker.h"
#include "backends/sim/SimGoogleAdsNetwork.h"
#include "backends/sim/SimNetworkReachability.h"
#include "backends/sim/SimPermissionAuthority.h"
#include "backends/sim/SimMusicLibrary.h"
#include "backends/sim/SimPhotoLibrary.h"
#include "backends/sim/SimPlaces.h"
#include "backends/sim/SimVolume.h"
#include "platform/PlatformState.h"
#include "platform/foundation/Date.h"
#include "platform/foundation/FatalError.h"
#include "platform/foundation/NSLocale.h"
#include "platform/foundation/NSPathUtilities.h"
#include "platform/foundation/NSTimeZone.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/uikit/UIDevice.h"
#include "platform/uikit/UIScreen.h"

namespace nimbrel::sim {

namespace fs = std::filesystem;

SimPlatform::SimPlatform(Fixture fixture, RunLoopChoice choice)
    : loop_(choice == RunLoopChoice::own ? std::make_unique<ManualRunLoop>(fixture.now) : nullptr),
      fixture_(std::move(fixture)) {
  if (!loop_ && !RunLoop::hasCurrent()) fatalError("the simulator was asked to use a run loop, but none is installed");
  resetPlatformState();
  makeHome();
  setApplicationHomeDirectory(home_);
  NSLocale::setCurrentLocaleIdentifier(fixture_.locale);
  NSTimeZone::setLocalTimeZoneName(fixture_.timeZone);
  UIUserInterfaceIdiom idiom = fixture_.idiom == "pad"     ? UIUserInterfaceIdiom::pad
                               : fixture_.idiom == "phone" ? UIUserInterfaceIdiom::phone
                                                           : UIUserInterfaceIdiom::unspecified;
  UIDevice::currentDevice().configure(idiom, fixture_.systemVersion);
  UIScreen::mainScreen().configure({fixture_.screenWidth, fixture_.screenHeight}, fixture_.screenScale);
  PermissionAuthority::install(std::make_shared<SimPermissionAuthority>(fixture_, calls_));
  AppLovinNetwork::install(std::make_shared<SimAppLovinNetwork>(
      fixture_.applovinInterstitial, fixture_.applovinNative, fixture_.applovinAppOpen, calls_));
  GoogleAdsNetwork::install(std::make_shared<SimGoogleAdsNetwork>(fixture_.googleInterstitial, calls_));
  NetworkReachability::install(std::make_shared<SimNetworkReachability>(fixture_.network));
  preferences_ = std::make_shared<InMemoryPreferencesStore>(fixture_.preferences);
  NSUserDefaults::installStandard(preferences_);
  FileCreationDateSource::install(fileDates_);
  DocumentPickerSource::install(std::make_shared<SimDocumentPicker>(fixture_.picker, pickerFolder(), fileDates_));
  placeDocuments();
  auto photos = std::make_shared<SimPhotoLibrary>(fixture_, home_, calls_);
  auto music = std::make_shared<SimMusicLibrary>(fixture_, home_);
  PhotoLibrarySource::install(photos);
  MediaLibrarySource::install(music);
  GeocoderSource::install(std::make_shared<SimGeocoder>(*photos));
  MediaDurations::install(std::make_shared<SimMediaDurations>(*photos, *music));
  VolumeInfoSource::install(std::make_shared<SimVolume>(fixture_));
}

SimPlatform::~SimPlatform() {
  resetPlatformState();
  if (!home_.empty() && !std::getenv("NIMBREL_KEEP_SIM_HOME")) {
    std::error_code ec;
    fs::remove_all(home_, ec);
    fs::remove_all(pickerFolder(), ec);
  }
}

ManualRunLoop& SimPlatform::runLoop() {
  if (!loop_) fatalError("the simulator runs on the installed run loop, not a manual one");
  return *loop_;
}

void SimPlatform::makeHome() {
  std::error_code ec;
  std::string base = fs::temp_directory_path(ec).string();
  if (ec || base.empty()) base = "/tmp";
  std::string pattern = base + "/nimbrel-sim-XXXXXX";
  if (!::mkdtemp(pattern.data())) fatalError("cannot make the simulator's home under " + base);
  home_ = pattern;
  fs::create_directories(home_ + "/Documents", ec);
}

void SimPlatform::placeDocuments() {
  if (fixture_.documents.empty()) return;
  std::string folder = home_ + "/Documents/Nimbrel/importedFiles";
  std::error_code ec;
  fs::create_directories(folder, ec);
  for (const auto& doc : fixture_.documents) {
    std::string path = folder + "/" + doc.name;
    if (!fileDates_->place(path, doc.size, doc.hasCreationDate ? std::optional<double>(doc.created) : std::nullopt, doc.contents)) {
      fatalError("cannot place the fixture document " + path);
    }
  }
}

}  // namespace nimbrel::sim
