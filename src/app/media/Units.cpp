#include "app/media/Units.h"

#include <cstdio>

namespace nimbrel {

std::string Units::getReadableUnit() const {
  char buffer[64];
  if (bytes < 1024) return std::to_string(bytes) + " bytes";
  if (bytes < 1'048'576) {
    std::snprintf(buffer, sizeof buffer, "%.2f KB", kilobytes());
  } else if (bytes < 1'073'741'824) {
    std::snprintf(buffer, sizeof buffer, "%.2f MB", megabytes());
  } else {
    std::snprintf(buffer, sizeof buffer, "%.2f GB", gigabytes());
  }
  return buffer;
}

}  // namespace nimbrel
