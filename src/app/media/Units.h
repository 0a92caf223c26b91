#pragma once

#include <cstdint>
#include <string>

namespace nimbrel {

// A byte count with its text form in binary units.
struct Units {
  std::int64_t bytes = 0;

  Units() = default;
  explicit Units(std::int64_t b) : bytes(b) {}

  double kilobytes() const { return static_cast<double>(bytes) * 0.0009765625; }
  double megabytes() const { return kilobytes() * 0.0009765625; }
  double gigabytes() const { return megabytes() * 0.0009765625; }
  // "N bytes" below 1024 (negatives too), then "%.2f KB", "%.2f MB", "%.2f GB"; nothing above GB.
  std::string getReadableUnit() const;
};

}  // namespace nimbrel
