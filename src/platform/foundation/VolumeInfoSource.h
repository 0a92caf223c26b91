#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

// The figures of the volume that holds a path: its size, its free space and the capacity
// available for important use. A figure that cannot be read has no value.
class VolumeInfoSource {
 public:
  struct Figures {
    std::optional<std::int64_t> size;
    std::optional<std::int64_t> free;
    std::optional<std::int64_t> importantAvailable;
  };
  virtual ~VolumeInfoSource() = default;
  virtual Figures figures(const std::string& path) const = 0;

  // Until a backend installs one: statvfs of the path.
  static std::shared_ptr<VolumeInfoSource> current();
  static void install(std::shared_ptr<VolumeInfoSource> source);
};
