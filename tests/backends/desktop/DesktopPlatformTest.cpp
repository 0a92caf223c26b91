#include "backends/desktop/DesktopPlatform.h"

#include <gtest/gtest.h>

#include "DesktopTestSupport.h"
#include "backends/desktop/index/DesktopLocations.h"
#include "backends/desktop/DesktopOpener.h"
#include "backends/desktop/DesktopPhotoLibrary.h"
#include "backends/desktop/DesktopPlaces.h"
#include "backends/desktop/media/SampleMedia.h"
#include "platform/av/MediaDurations.h"
#include "platform/corelocation/CLGeocoder.h"
#include "platform/foundation/NSLocale.h"
#include "platform/foundation/NSPathUtilities.h"
#include "platform/foundation/NSTimeZone.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/foundation/VolumeInfoSource.h"
#include "platform/mediaplayer/MediaLibrarySource.h"
#include "platform/photos/PhotoLibrarySource.h"
#include "platform/services/PermissionAuthority.h"
#include "platform/uikit/UIApplication.h"

namespace nimbrel::desktop {
namespace {

using namespace testing;

TEST(DesktopLocationsTest, XdgFoldersAndOverridesDecideWhereThingsLive) {
  TempFolder home;
  ScopedEnv env[] = {{"HOME", home.path()}, {"XDG_DATA_HOME", home / "data"}, {"XDG_CONFIG_HOME", home / "config"},
                     {"XDG_CACHE_HOME", "relative/ignored"}, {"XDG_STATE_HOME", std::nullopt}, {"NIMBREL_HOME", std::nullopt},
                     {"XDG_PICTURES_DIR", std::nullopt}, {"XDG_VIDEOS_DIR", std::nullopt}, {"NIMBREL_MUSIC", home / "Tunes"}};
  fs::create_directories(home / "config");
  std::ofstream(home / "config/user-dirs.dirs") << "# comment\nXDG_PICTURES_DIR=\"$HOME/Bilder\"\n"
                                                    "XDG_VIDEOS_DIR=\"$HOME/\"\nXDG_MUSIC_DIR=\"$HOME/Musik\"\n";
  auto l = DesktopLocations::resolve();
  EXPECT_EQ(l.appHome, home / "data/nimbrel");
  EXPECT_EQ(l.documents, home / "data/nimbrel/Documents");
  EXPECT_EQ(l.preferences, home / "config/nimbrel/preferences.plist");
  EXPECT_EQ(l.cache, home / ".cache/nimbrel") << "a relative XDG variable counts as unset";
  EXPECT_EQ(l.thumbnails, home / ".cache/thumbnails");
  EXPECT_EQ(l.state, home / ".local/state/nimbrel");
  EXPECT_EQ(l.trash(), home / "data/Trash");
  EXPECT_EQ(l.pictures, home / "Bilder");
  EXPECT_EQ(l.videos, "") << "pointing at the home itself disables a folder";
  EXPECT_EQ(l.music, home / "Tunes") << "NIMBREL_MUSIC wins over user-dirs";

  DesktopLocations::Overrides o;
  o.home = home / "elsewhere";
  o.pictures = home / "P";
  auto overridden = DesktopLocations::resolve(o);
  EXPECT_EQ(overridden.appHome, home / "elsewhere");
  EXPECT_EQ(overridden.pictures, home / "P");
}

TEST(DesktopLocationsTest, UserDirsLinesAreParsedAsXdgUserDirsWritesThem) {
  auto dirs = DesktopLocations::parseUserDirs(
      "XDG_DESKTOP_DIR=\"$HOME/Desktop\"\n  # x\nXDG_PICTURES_DIR=\"/media/photos/\"\nBAD=\"relative\"\nXDG_X=\"$HOME/a\\\"b\"\n",
      "/home/u");
  EXPECT_EQ(dirs["XDG_DESKTOP_DIR"], "/home/u/Desktop");
  EXPECT_EQ(dirs["XDG_PICTURES_DIR"], "/media/photos");
  EXPECT_EQ(dirs.count("BAD"), 0u);
  EXPECT_EQ(dirs["XDG_X"], "/home/u/a\"b");
}

TEST(DesktopPlatformTest, LocaleAndZoneComeFromTheEnvironment) {
  {
    ScopedEnv all("LC_ALL", std::nullopt);
    ScopedEnv messages("LC_MESSAGES", std::nullopt);
    ScopedEnv lang("LANG", "pt_PT.UTF-8@euro");
    EXPECT_EQ(DesktopPlatform::localeFromEnvironment(), "pt_PT");
    ScopedEnv c("LC_ALL", "C.UTF-8");
    EXPECT_EQ(DesktopPlatform::localeFromEnvironment(), "en_US");
  }
  ScopedEnv tz("TZ", ":/usr/share/zoneinfo/Europe/Lisbon");
  EXPECT_EQ(DesktopPlatform::timeZoneFromEnvironment(), "Europe/Lisbon");
  ScopedEnv tz2("TZ", "Asia/Tokyo");
  EXPECT_EQ(DesktopPlatform::timeZoneFromEnvironment(), "Asia/Tokyo");
}

TEST(DesktopPlatformTest, InstallsEverySourceOverTheUsersFolders) {
  TempFolder home;
  fs::create_directories(home / "Pictures");
  ASSERT_TRUE(writeSampleJpeg(home / "Pictures/a.jpg", 40, 30));
  ScopedEnv env[] = {{"HOME", home.path()}, {"XDG_DATA_HOME", home / "data"}, {"XDG_CONFIG_HOME", home / "config"},
                     {"XDG_CACHE_HOME", home / "cache"}, {"XDG_STATE_HOME", home / "state"}, {"LANG", "fr_FR.UTF-8"},
                     {"LC_ALL", std::nullopt}, {"LC_MESSAGES", std::nullopt}, {"TZ", "Europe/Paris"}};
  {
    DesktopPlatform::Options options;
    options.runLoop = DesktopPlatform::RunLoopChoice::own;
    options.watch = false;
    options.locations.pictures = home / "Pictures";
    DesktopPlatform platform(options);
    EXPECT_TRUE(platform.ownsRunLoop());
    EXPECT_EQ(NSHomeDirectory(), home / "data/nimbrel");
    EXPECT_TRUE(fs::is_directory(home / "data/nimbrel/Documents"));
    EXPECT_EQ(NSLocale::currentLocale(), "fr_FR");
    EXPECT_EQ(NSTimeZone::localTimeZone(), "Europe/Paris");
    ASSERT_TRUE(platform.photoLibrary().waitUntilIdle(20));
    platform.runLoop().runUntilIdle();
    EXPECT_EQ(PhotoLibrarySource::current()->assets().size(), 1u);
    EXPECT_EQ(PhotoLibrarySource::current().get(), &platform.photoLibrary());
    EXPECT_EQ(PermissionAuthority::current()->status(PermissionAuthority::Kind::photos), 0);
    auto figures = VolumeInfoSource::current()->figures(NSHomeDirectory());
    ASSERT_TRUE(figures.size && figures.free);
    EXPECT_GT(*figures.size, 0);
    auto place = GeocoderSource::current()->reverseGeocode(CLLocation{{48.86, 2.35}});
    ASSERT_TRUE(std::holds_alternative<std::vector<CLPlacemark>>(place));
    EXPECT_EQ(std::get<std::vector<CLPlacemark>>(place).front().locality, std::optional<std::string>("Paris"));
    EXPECT_TRUE(std::holds_alternative<NSError>(GeocoderSource::current()->reverseGeocode(CLLocation{{0, -150}})));
    EXPECT_TRUE(std::isnan(MediaDurations::current()->durationOfFile(home / "nothing.mp3")));
    NSUserDefaults::standardUserDefaults().setBool(true, "isFirstTime");
  }
  EXPECT_TRUE(fs::exists(home / "config/nimbrel/preferences.plist")) << "pending preferences are written at the end";
  EXPECT_TRUE(fs::exists(home / "cache/nimbrel/library.sqlite3"));
}

TEST(DesktopOpenerTest, StartsTheProgramWithTheUrlAndNoShell) {
  TempFolder dir;
  std::string script = dir / "opener.sh";
  std::ofstream(script) << "#!/bin/sh\nprintf '%s' \"$1\" > \"" << (dir / "seen.part") << "\"\nmv \""
                        << (dir / "seen.part") << "\" \"" << (dir / "seen") << "\"\n";
  fs::permissions(script, fs::perms::owner_all);
  auto url = URL::withString("https://example.org/a%20b?x=1&y='quoted'");
  ASSERT_TRUE(url);
  ASSERT_TRUE(openWithDesktop(*url, script));
  // The program runs on its own: wait (bounded) for what it wrote.
  auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (!fs::exists(dir / "seen") && std::chrono::steady_clock::now() < deadline) std::this_thread::yield();
  ASSERT_TRUE(fs::exists(dir / "seen"));
  EXPECT_EQ(readText(dir / "seen"), url->absoluteString());
  EXPECT_FALSE(openWithDesktop(*url, dir / "missing-program"));
  EXPECT_FALSE(openWithDesktop(*URL::withString("app-settings:"), script));
}

}  // namespace
}  // namespace nimbrel::desktop
