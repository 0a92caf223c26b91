#include "backends/desktop/index/PreferencesFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <system_error>

#include <ctime>

#include "platform/foundation/BinaryPropertyList.h"
#include "platform/foundation/Diagnostics.h"

namespace nimbrel::desktop {

namespace fs = std::filesystem;

namespace {

constexpr const char* kTemporaryMark = ".tmp-";

std::string folderOf(const std::string& path) {
  auto slash = path.rfind('/');
  return slash == std::string::npos ? "." : (slash == 0 ? "/" : path.substr(0, slash));
}

bool writeAll(int fd, const Data& bytes) {
  size_t done = 0;
  while (done < bytes.size()) {
    ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
    if (n < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    done += static_cast<size_t>(n);
  }
  return true;
}

}  // namespace

PreferencesFile::PreferencesFile(std::string path) : path_(std::move(path)) {}

std::string PreferencesFile::defaultPath() {
  const char* config = std::getenv("XDG_CONFIG_HOME");
  std::string base;
  if (config && *config == '/') {
    base = config;
  } else {
    const char* home = std::getenv("HOME");
    base = std::string(home ? home : "") + "/.config";
  }
  return base + "/nimbrel/preferences.plist";
}

void PreferencesFile::removeStaleTemporaries() const {
  // A writer killed between creating its temporary file and the rename leaves it behind.
  std::error_code ec;
  std::string prefix = fs::path(path_).filename().string() + kTemporaryMark;
  for (const auto& entry : fs::directory_iterator(folderOf(path_), ec)) {
    if (entry.path().filename().string().rfind(prefix, 0) == 0) fs::remove(entry.path(), ec);
  }
}

PlistValue::Dictionary PreferencesFile::load() {
  removeStaleTemporaries();
  std::ifstream in(path_, std::ios::binary);
  if (!in) return {};
  Data bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  auto root = BinaryPropertyList::read(bytes);
  std::string why;
  if (!root) {
    why = root.error();
  } else if (!root->isDictionary()) {
    why = "the root is no dictionary";
  } else {
    return root->dictionary();
  }
  std::string aside = asidePath(path_);
  std::error_code ec;
  fs::rename(path_, aside, ec);
  if (ec) {
    Diagnostics::report("Preferences at " + path_ + " could not be read (" + why + ") nor moved aside (" +
                        ec.message() + "); starting from defaults");
    return {};
  }
  keptAside_ = aside;
  Diagnostics::report("Preferences at " + path_ + " could not be read (" + why + "); kept as " + aside +
                      ", starting from defaults");
  return {};
}

std::string PreferencesFile::asidePath(const std::string& path) {
  std::string base = path + ".unreadable-" + std::to_string(static_cast<long long>(::time(nullptr)));
  std::string candidate = base;
  std::error_code ec;
  for (int n = 2; fs::exists(candidate, ec); ++n) candidate = base + "-" + std::to_string(n);
  return candidate;
}

bool PreferencesFile::save(const PlistValue::Dictionary& values) {
  auto bytes = BinaryPropertyList::write(PlistValue(values));
  if (!bytes) {
    Diagnostics::report("Preferences not written: " + bytes.error());
    return false;
  }
  std::string folder = folderOf(path_);
  std::error_code ec;
  fs::create_directories(folder, ec);
  std::string temporary = path_ + kTemporaryMark + "XXXXXX";
  int fd = ::mkstemp(temporary.data());
  if (fd < 0) {
    Diagnostics::report("Preferences not written: cannot create a file in " + folder);
    return false;
  }
  bool ok = ::fchmod(fd, 0600) == 0 && writeAll(fd, *bytes) && ::fsync(fd) == 0;
  ok = (::close(fd) == 0) && ok;
  if (!ok || ::rename(temporary.c_str(), path_.c_str()) != 0) {
    ::unlink(temporary.c_str());
    Diagnostics::report("Preferences not written to " + path_);
    return false;
  }
  // The rename itself must reach the disk before the write counts as done.
  int dir = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY);
  if (dir >= 0) {
    ::fsync(dir);
    ::close(dir);
  }
  return true;
}

}  // namespace nimbrel::desktop
