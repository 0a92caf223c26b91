#pragma once

#include <sys/types.h>

#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "platform/foundation/FileCreationDateSource.h"

namespace nimbrel::sim {

// Creation dates of the simulator's files: the fixture's date is kept as the modification time
// (the file system's own birth time is the moment of the run). A file made without a date is
// known by device and inode, so that it keeps having none when it is moved within the volume.
class SimFileDates : public FileCreationDateSource {
 public:
  std::optional<Date> creationDate(const std::string& path) const override;
  // Writes `contents`, or a sparse file of `size` bytes, dated `created` (seconds since 2001) or
  // without a date.
  bool place(const std::string& path, std::int64_t size, std::optional<double> created,
             const std::optional<std::string>& contents = std::nullopt);

 private:
  mutable std::mutex mutex_;
  std::set<std::pair<dev_t, ino_t>> dateless_;
};

}  // namespace nimbrel::sim
