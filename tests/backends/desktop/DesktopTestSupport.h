#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "backends/desktop/DesktopPhotoLibrary.h"
#include "platform/foundation/ManualRunLoop.h"

namespace nimbrel::desktop::testing {

namespace fs = std::filesystem;

// A folder of its own per test, removed afterwards.
class TempFolder {
 public:
  TempFolder() {
    char pattern[] = "/tmp/nimbrel-desktop-XXXXXX";
    if (::mkdtemp(pattern)) path_ = pattern;
  }
  ~TempFolder() {
    std::error_code ec;
    if (!path_.empty()) fs::remove_all(path_, ec);
  }
  const std::string& path() const { return path_; }
  std::string operator/(const std::string& rel) const { return path_ + "/" + rel; }

 private:
  std::string path_;
};

// Sets an environment variable for the scope of a test, then puts back what was there.
class ScopedEnv {
 public:
  ScopedEnv(const char* name, const std::optional<std::string>& value) : name_(name) {
    if (const char* old = std::getenv(name)) old_ = old;
    if (value) {
      ::setenv(name, value->c_str(), 1);
    } else {
      ::unsetenv(name);
    }
  }
  ~ScopedEnv() {
    if (old_) {
      ::setenv(name_.c_str(), old_->c_str(), 1);
    } else {
      ::unsetenv(name_.c_str());
    }
  }

 private:
  std::string name_;
  std::optional<std::string> old_;
};

inline ino_t inodeOf(const std::string& path) {
  struct stat st;
  return ::lstat(path.c_str(), &st) == 0 ? st.st_ino : 0;
}

inline std::string readText(const std::string& path) {
  std::ifstream in(path);
  return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

inline void setMtime(const std::string& path, long seconds) {
  struct timespec times[2] = {{seconds, 0}, {seconds, 0}};
  ::utimensat(AT_FDCWD, path.c_str(), times, 0);
}

// Runs the main queue until `done` holds, waiting on the library's worker in between: bounded by
// `timeoutSeconds` of real time, never a fixed sleep.
template <class Done>
bool pumpUntil(ManualRunLoop& loop, const DesktopPhotoLibrary& library, Done done, double timeoutSeconds = 10) {
  auto deadline = std::chrono::steady_clock::now() + std::chrono::duration<double>(timeoutSeconds);
  while (true) {
    auto seen = library.postedSnapshots();
    loop.runUntilIdle();
    if (done()) return true;
    auto left = std::chrono::duration<double>(deadline - std::chrono::steady_clock::now()).count();
    if (left <= 0) return false;
    library.waitForPost(seen, left);
  }
}

// A library over <root>/Pictures and <root>/Videos with its own index, cache and trash.
inline DesktopPhotoLibrary::Options libraryOptions(const TempFolder& root, bool watch = false) {
  DesktopPhotoLibrary::Options o;
  o.indexPath = root / "cache/nimbrel/library.sqlite3";
  o.pictures = root / "Pictures";
  o.videos = root / "Videos";
  o.thumbnails = root / "cache/thumbnails";
  o.trash = root / "data/Trash";
  o.watch = watch;
  o.quietSeconds = 0.05;
  fs::create_directories(o.pictures);
  fs::create_directories(o.videos);
  return o;
}

}  // namespace nimbrel::desktop::testing
