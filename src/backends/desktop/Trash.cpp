#include "backends/desktop/Trash.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <ctime>
#include <filesystem>

#include "backends/desktop/index/FileUri.h"

namespace nimbrel::desktop {

namespace {

std::string baseName(const std::string& path) {
  auto slash = path.rfind('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

bool makeFolder(const std::string& path) {
  std::error_code ec;
  std::filesystem::create_directories(path, ec);
  struct stat st;
  return ::stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

std::string localTimestamp() {
  std::time_t now = std::time(nullptr);
  std::tm tm{};
  ::localtime_r(&now, &tm);
  char text[32];
  std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &tm);
  return text;
}

// The mount point holding `path`: the last ancestor on the same device.
std::string mountTop(const std::string& path) {
  struct stat st;
  if (::stat(path.c_str(), &st) != 0) return "/";
  std::filesystem::path p = std::filesystem::path(path).parent_path();
  std::string top = p.string();
  while (p.has_parent_path() && p != p.root_path()) {
    auto parent = p.parent_path();
    struct stat pst;
    if (::stat(parent.c_str(), &pst) != 0 || pst.st_dev != st.st_dev) break;
    p = parent;
    top = p.string();
  }
  return top;
}

}  // namespace

Trash::Trash(std::string homeTrash) : home_(std::move(homeTrash)) {}

std::optional<Trash::Moved> Trash::moveInto(const std::string& trash, const std::string& path,
                                            const std::string& infoPath) const {
  if (!makeFolder(trash + "/files") || !makeFolder(trash + "/info")) return std::nullopt;
  ::chmod(trash.c_str(), 0700);
  std::string name = baseName(path);
  std::string stem = name, ext;
  if (auto dot = name.rfind('.'); dot != std::string::npos && dot > 0) {
    stem = name.substr(0, dot);
    ext = name.substr(dot);
  }
  for (int n = 1; n < 10000; ++n) {
    std::string candidate = n == 1 ? name : stem + "." + std::to_string(n) + ext;
    std::string info = trash + "/info/" + candidate + ".trashinfo";
    // Creating the info file exclusively claims the name, as the trash rules require.
    int fd = ::open(info.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0600);
    if (fd < 0) {
      if (errno == EEXIST) continue;
      return std::nullopt;
    }
    std::string text = "[Trash Info]\nPath=" + escapeTrashPath(infoPath) + "\nDeletionDate=" + localTimestamp() + "\n";
    bool written = ::write(fd, text.data(), text.size()) == static_cast<ssize_t>(text.size()) && ::fsync(fd) == 0;
    ::close(fd);
    std::string target = trash + "/files/" + candidate;
    struct stat existing;
    // The info file is ours and names nothing yet: taking it back loses nothing of the user's.
    if (!written) {
      ::unlink(info.c_str());
      return std::nullopt;
    }
    if (::lstat(target.c_str(), &existing) == 0) {
      ::unlink(info.c_str());
      continue;
    }
    if (::rename(path.c_str(), target.c_str()) == 0) return Moved{target, info};
    ::unlink(info.c_str());
    return std::nullopt;  // another device, or no right to move it: the file stays where it is
  }
  return std::nullopt;
}

std::optional<Trash::Moved> Trash::moveToTrash(const std::string& path) const {
  struct stat st, trashParent;
  if (::lstat(path.c_str(), &st) != 0) return std::nullopt;
  std::string homeBase = std::filesystem::path(home_).parent_path().string();
  makeFolder(homeBase);
  if (::stat(homeBase.c_str(), &trashParent) == 0 && trashParent.st_dev == st.st_dev) {
    return moveInto(home_, path, path);
  }
  // Another device: its own top-level trash, where paths are kept relative to the mount.
  std::string top = mountTop(path);
  std::string trash = (top == "/" ? std::string() : top) + "/.Trash-" + std::to_string(::getuid());
  std::string relative = path.substr(top == "/" ? 1 : top.size() + 1);
  if (auto moved = moveInto(trash, path, relative)) return moved;
  return std::nullopt;
}

bool Trash::restore(const Moved& moved, const std::string& originalPath) const {
  struct stat st;
  if (::lstat(originalPath.c_str(), &st) == 0) return false;  // never over something new
  if (::rename(moved.trashed.c_str(), originalPath.c_str()) != 0) return false;
  ::unlink(moved.info.c_str());
  return true;
}

}  // namespace nimbrel::desktop
