#include "backends/desktop/index/DesktopLocations.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace nimbrel::desktop {

namespace {

std::string env(const char* name) {
  const char* v = std::getenv(name);
  return v ? std::string(v) : std::string();
}

std::string trimmedSlashes(std::string path) {
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
}

// XDG variables only count when absolute; a relative one is ignored, as the base directory rules say.
std::string xdg(const char* name, const std::string& fallback) {
  std::string v = env(name);
  return (!v.empty() && v[0] == '/') ? trimmedSlashes(v) : fallback;
}

std::string userHomeDirectory() {
  std::string home = env("HOME");
  if (!home.empty()) return trimmedSlashes(home);
  if (const passwd* pw = ::getpwuid(::getuid()); pw && pw->pw_dir) return trimmedSlashes(pw->pw_dir);
  return "/";
}

std::string readFile(const std::string& path) {
  std::ifstream in(path);
  if (!in) return {};
  std::ostringstream out;
  out << in.rdbuf();
  return out.str();
}

}  // namespace

std::map<std::string, std::string> DesktopLocations::parseUserDirs(const std::string& text, const std::string& home) {
  std::map<std::string, std::string> out;
  std::istringstream lines(text);
  std::string line;
  while (std::getline(lines, line)) {
    auto start = line.find_first_not_of(" \t");
    if (start == std::string::npos || line[start] == '#') continue;
    auto eq = line.find('=', start);
    if (eq == std::string::npos) continue;
    std::string key = line.substr(start, eq - start);
    std::string value = line.substr(eq + 1);
    auto last = value.find_last_not_of(" \t\r");
    value = last == std::string::npos ? std::string() : value.substr(0, last + 1);
    if (value.size() < 2 || value.front() != '"' || value.back() != '"') continue;
    value = value.substr(1, value.size() - 2);
    std::string unescaped;
    for (size_t i = 0; i < value.size(); ++i) {
      if (value[i] == '\\' && i + 1 < value.size()) ++i;
      unescaped += value[i];
    }
    if (unescaped.rfind("$HOME", 0) == 0) {
      unescaped = home + unescaped.substr(5);
    } else if (unescaped.empty() || unescaped[0] != '/') {
      continue;  // only "$HOME/..." or absolute paths are valid there
    }
    out[key] = trimmedSlashes(unescaped);
  }
  return out;
}

DesktopLocations DesktopLocations::resolve(const Overrides& o) {
  DesktopLocations l;
  l.userHome = userHomeDirectory();
  l.dataHome = !o.dataHome.empty() ? o.dataHome : xdg("XDG_DATA_HOME", l.userHome + "/.local/share");
  std::string configHome = !o.config.empty() ? o.config : xdg("XDG_CONFIG_HOME", l.userHome + "/.config");
  std::string cacheHome = xdg("XDG_CACHE_HOME", l.userHome + "/.cache");
  std::string stateHome = xdg("XDG_STATE_HOME", l.userHome + "/.local/state");

  l.appHome = !o.home.empty() ? trimmedSlashes(o.home) : xdg("NIMBREL_HOME", l.dataHome + "/nimbrel");
  l.documents = l.appHome + "/Documents";
  l.preferences = configHome + "/nimbrel/preferences.plist";
  l.cache = !o.cache.empty() ? o.cache : cacheHome + "/nimbrel";
  l.state = !o.state.empty() ? o.state : stateHome + "/nimbrel";
  l.thumbnails = cacheHome + "/thumbnails";

  auto dirs = parseUserDirs(readFile(configHome + "/user-dirs.dirs"), l.userHome);
  auto folder = [&](const std::string& given, const char* nimbrelVar, const char* xdgVar, const char* fallback) {
    if (!given.empty()) return trimmedSlashes(given);
    if (std::string v = env(nimbrelVar); !v.empty()) return trimmedSlashes(v);
    std::string path = xdg(xdgVar, "");
    if (path.empty()) {
      auto it = dirs.find(xdgVar);
      path = it != dirs.end() ? it->second : l.userHome + "/" + fallback;
    }
    // xdg-user-dirs disables a folder by pointing it at the home itself: indexing all of the home
    // would be wrong, so such a folder is none.
    return path == l.userHome ? std::string() : path;
  };
  l.pictures = folder(o.pictures, "NIMBREL_PICTURES", "XDG_PICTURES_DIR", "Pictures");
  l.videos = folder(o.videos, "NIMBREL_VIDEOS", "XDG_VIDEOS_DIR", "Videos");
  l.music = folder(o.music, "NIMBREL_MUSIC", "XDG_MUSIC_DIR", "Music");
  return l;
}

}  // namespace nimbrel::desktop
