#pragma once

#include <memory>
#include <string>

#include "backends/desktop/ShareSurface.h"
#include "backends/desktop/index/DesktopLocations.h"
#include "backends/desktop/StoredListCleaner.h"
#include "platform/foundation/ManualRunLoop.h"
#include "platform/uikit/UIDevice.h"

namespace nimbrel::desktop {

class DesktopPhotoLibrary;
class DesktopMusicLibrary;
class DesktopPermissions;
class PreferencesFile;

// The Linux desktop platform of one run: the user's own folders, indexed; the preferences file;
// permission answers kept in the state folder; the trash, thumbnails, xdg-open. Installing it
// resets the process's platform state; destroying it writes pending preferences and resets again.
class DesktopPlatform {
 public:
  // Which run loop the run uses: its own (a manual loop starting at the wall clock's time; the
  // headless runner), or the one already installed (a front end's event loop).
  enum class RunLoopChoice { own, installed };
  struct Options {
    DesktopLocations::Overrides locations;
    RunLoopChoice runLoop = RunLoopChoice::installed;
    UIUserInterfaceIdiom idiom = UIUserInterfaceIdiom::phone;
    bool watch = true;  // inotify and background rescans of the photo folders
    bool scan = true;   // bring the index up to date at start (in the background)
    // The program's remembered lists, kept readable at construction (before the program reads
    // them) and whenever the libraries change; without keys they are left alone.
    StoredListCleaner::Rules storedLists;
    // The session's clipboard, chooser and bus for the share sheet; none in a headless run.
    std::shared_ptr<ShareSurface> shareSurface;
  };

  DesktopPlatform();
  explicit DesktopPlatform(Options options);
  ~DesktopPlatform();
  DesktopPlatform(const DesktopPlatform&) = delete;
  DesktopPlatform& operator=(const DesktopPlatform&) = delete;

  const DesktopLocations& locations() const { return locations_; }
  ManualRunLoop& runLoop();
  bool ownsRunLoop() const { return loop_ != nullptr; }
  DesktopPhotoLibrary& photoLibrary() { return *photos_; }
  DesktopMusicLibrary& musicLibrary() { return *music_; }
  // The diagnostics file: $XDG_STATE_HOME/nimbrel/nimbrel.log.
  std::string logPath() const { return locations_.state + "/nimbrel.log"; }

  // "de_DE.UTF-8" → "de_DE"; C, POSIX or nothing → "en_US".
  static std::string localeFromEnvironment();
  // Now, as the platform's dates count it (seconds since 2001-01-01 UTC).
  static double wallClockSince2001();
  // $TZ, else the zone /etc/localtime links to, else /etc/timezone, else "UTC".
  static std::string timeZoneFromEnvironment();

 private:
  std::unique_ptr<ManualRunLoop> loop_;
  DesktopLocations locations_;
  std::shared_ptr<DesktopPhotoLibrary> photos_;
  std::shared_ptr<DesktopMusicLibrary> music_;
  std::shared_ptr<StoredListCleaner> cleaner_;
};

}  // namespace nimbrel::desktop
