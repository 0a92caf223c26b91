#include "platform/foundation/FileCreationDateSource.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <mutex>

namespace {

class FileSystemDates : public FileCreationDateSource {
 public:
  std::optional<Date> creationDate(const std::string& path) const override {
    struct statx sx;
    if (::statx(AT_FDCWD, path.c_str(), 0, STATX_BTIME | STATX_MTIME, &sx) != 0) return std::nullopt;
    const auto& t = (sx.stx_mask & STATX_BTIME) ? sx.stx_btime : sx.stx_mtime;
    return Date::fromUnix(static_cast<double>(t.tv_sec) + t.tv_nsec / 1e9);
  }
};

std::mutex mutex;
std::shared_ptr<FileCreationDateSource> installed;

}  // namespace

std::shared_ptr<FileCreationDateSource> FileCreationDateSource::current() {
  std::lock_guard lock(mutex);
  if (!installed) installed = std::make_shared<FileSystemDates>();
  return installed;
}

void FileCreationDateSource::install(std::shared_ptr<FileCreationDateSource> source) {
  std::lock_guard lock(mutex);
  installed = std::move(source);
}
