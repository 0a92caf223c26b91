#pragma once

#include <map>
#include <optional>
#include <string>

namespace nimbrel::desktop {

// Where the program keeps and finds things on a Linux desktop, resolved once from the environment
// (XDG base directories, xdg-user-dirs) unless the caller names a folder itself.
struct DesktopLocations {
  // What the caller may set; an empty field is resolved from the environment.
  struct Overrides {
    std::string home;  // the app home (NSHomeDirectory)
    std::string pictures, videos, music;
    std::string cache, state, config, dataHome;
  };

  std::string userHome;  // $HOME
  std::string appHome;   // $NIMBREL_HOME or $XDG_DATA_HOME/nimbrel
  std::string documents;
  std::string preferences;  // $XDG_CONFIG_HOME/nimbrel/preferences.plist
  std::string cache;        // $XDG_CACHE_HOME/nimbrel: the index
  std::string state;        // $XDG_STATE_HOME/nimbrel: permission answers
  std::string dataHome;     // $XDG_DATA_HOME: the trash lives under it
  std::string thumbnails;   // $XDG_CACHE_HOME/thumbnails, shared with other programs
  // Empty when the folder is disabled (xdg-user-dirs points it at $HOME) or unknown.
  std::string pictures, videos, music;

  static DesktopLocations resolve(const Overrides& overrides = {});

  std::string indexPath() const { return cache + "/library.sqlite3"; }
  std::string permissionsPath() const { return state + "/permissions.plist"; }
  std::string trash() const { return dataHome + "/Trash"; }

  // The entries of a user-dirs.dirs file (XDG_PICTURES_DIR="$HOME/Pictures"), $HOME expanded.
  static std::map<std::string, std::string> parseUserDirs(const std::string& text, const std::string& home);
};

}  // namespace nimbrel::desktop
