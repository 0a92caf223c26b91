#include "backends/sim/SimFileDates.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace nimbrel::sim {

std::optional<Date> SimFileDates::creationDate(const std::string& path) const {
  struct stat st;
  if (::stat(path.c_str(), &st) != 0) return std::nullopt;
  {
    std::lock_guard lock(mutex_);
    if (dateless_.count({st.st_dev, st.st_ino})) return std::nullopt;
  }
  return Date::fromUnix(static_cast<double>(st.st_mtim.tv_sec) + st.st_mtim.tv_nsec / 1e9);
}

bool SimFileDates::place(const std::string& path, std::int64_t size, std::optional<double> created,
                         const std::optional<std::string>& contents) {
  int fd = ::open(path.c_str(), O_CREAT | O_WRONLY | O_TRUNC, 0644);
  if (fd < 0) return false;
  // Sparse: the size is what the screens read, the contents never matter.
  bool ok = contents ? ::write(fd, contents->data(), contents->size()) == static_cast<ssize_t>(contents->size())
                     : ::ftruncate(fd, size) == 0;
  struct stat st;
  if (ok && ::fstat(fd, &st) == 0) {
    std::lock_guard lock(mutex_);
    if (created) {
      dateless_.erase({st.st_dev, st.st_ino});
    } else {
      dateless_.insert({st.st_dev, st.st_ino});
    }
  }
  if (created) {
    double unix = Date{*created}.timeIntervalSince1970();
    struct timespec times[2];
    times[0].tv_sec = times[1].tv_sec = static_cast<time_t>(unix);
    times[0].tv_nsec = times[1].tv_nsec = static_cast<long>((unix - static_cast<double>(times[0].tv_sec)) * 1e9);
    ::futimens(fd, times);
  }
  ::close(fd);
  return ok;
}

}  // namespace nimbrel::sim
