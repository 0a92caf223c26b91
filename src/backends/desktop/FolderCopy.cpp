#include "backends/desktop/FolderCopy.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

namespace nimbrel::desktop {

namespace {

bool copyBytes(int from, int to) {
  char buffer[1 << 16];
  for (;;) {
    ssize_t n = ::read(from, buffer, sizeof buffer);
    if (n == 0) return true;
    if (n < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    for (ssize_t done = 0; done < n;) {
      ssize_t w = ::write(to, buffer + done, static_cast<size_t>(n - done));
      if (w < 0) {
        if (errno == EINTR) continue;
        return false;
      }
      done += w;
    }
  }
}

}  // namespace

std::string FolderCopy::candidate(const std::string& name, int n) {
  if (n <= 1) return name;
  // A leading dot starts a hidden name, not an extension.
  auto dot = name.rfind('.');
  if (dot == std::string::npos || dot == 0) return name + " (" + std::to_string(n) + ")";
  return name.substr(0, dot) + " (" + std::to_string(n) + ")" + name.substr(dot);
}

std::optional<std::string> FolderCopy::copyInto(const std::string& folder, const std::string& file,
                                                const std::string& name) {
  const std::string base = name.empty() ? std::filesystem::path(file).filename().string() : name;
  int from = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
  if (from < 0) return std::nullopt;
  for (int n = 1; n < 10000; ++n) {
    std::string target = folder + "/" + candidate(base, n);
    int to = ::open(target.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (to < 0) {
      if (errno == EEXIST) continue;
      break;
    }
    bool ok = copyBytes(from, to);
    ok = ::close(to) == 0 && ok;
    ::close(from);
    if (!ok) {
      ::unlink(target.c_str());  // ours alone: the exclusive create made it
      return std::nullopt;
    }
    return target;
  }
  ::close(from);
  return std::nullopt;
}

}  // namespace nimbrel::desktop
