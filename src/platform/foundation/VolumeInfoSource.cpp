#include "platform/foundation/VolumeInfoSource.h"

#include <sys/statvfs.h>

#include <mutex>

namespace {

class StatvfsVolume : public VolumeInfoSource {
 public:
  Figures figures(const std::string& path) const override {
    struct statvfs st;
    if (::statvfs(path.c_str(), &st) != 0) return {};
    auto unit = static_cast<std::int64_t>(st.f_frsize);
    // What an unprivileged user may still write counts as available for important use.
    return {static_cast<std::int64_t>(st.f_blocks) * unit, static_cast<std::int64_t>(st.f_bfree) * unit,
            static_cast<std::int64_t>(st.f_bavail) * unit};
  }
};

std::mutex gMutex;
std::shared_ptr<VolumeInfoSource>& slot() {
  static std::shared_ptr<VolumeInfoSource> s;
  return s;
}

}  // namespace

std::shared_ptr<VolumeInfoSource> VolumeInfoSource::current() {
  std::lock_guard lock(gMutex);
  if (!slot()) slot() = std::make_shared<StatvfsVolume>();
  return slot();
}

void VolumeInfoSource::install(std::shared_ptr<VolumeInfoSource> source) {
  std::lock_guard lock(gMutex);
  slot() = std::move(source);
}
