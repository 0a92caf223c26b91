#include "app/storage/StorageFigures.h"

#include <cmath>
#include <cstdio>

#include "platform/foundation/FatalError.h"
#include "platform/foundation/NSFileManager.h"
#include "platform/foundation/NSPathUtilities.h"

namespace nimbrel {

namespace {

std::optional<std::int64_t> fileSystemAttribute(const char* key) {
  auto attributes = NSFileManager::defaultManager().attributesOfFileSystemForPath(NSHomeDirectory(), nullptr);
  if (!attributes) return std::nullopt;
  for (const auto& [k, v] : *attributes) {
    if (k == key && v.isInteger()) return v.integer();
  }
  return std::nullopt;
}

[[noreturn]] void arithmeticOverflow() {
  fatalError("Arithmetic overflow", "Nimbrel/StorageAnalysisVC", 0);
}

}  // namespace

std::optional<std::int64_t> fileSystemSizeBytes() { return fileSystemAttribute("NSFileSystemSize"); }
std::optional<std::int64_t> fileSystemFreeBytes() { return fileSystemAttribute("NSFileSystemFreeSize"); }
std::int64_t volumeTotalBytes() { return fileSystemSizeBytes().value_or(0); }

std::int64_t importantUsageBytes() {
  auto home = URL::fileURLWithPath(NSHomeDirectory(), true);
  return NSFileManager::defaultManager().volumeAvailableCapacityForImportantUsage(home).value_or(0);
}

std::string capacityText(std::int64_t x) {
  if (x <= 999) return std::to_string(x) + " B";
  static const char* kUnits[] = {"KB", "MB", "GB", "TB", "PB", "EB"};
  auto e = static_cast<int>(std::log2(static_cast<double>(x)) / 9.965784284662087);
  if (e < 1 || e > 6) fatalError("Index out of range", "Swift/ContiguousArrayBuffer.swift", 600);
  double v = static_cast<double>(x) / std::pow(1000.0, e);
  char buffer[64];
  if (e >= 2 && v < 100) {
    std::snprintf(buffer, sizeof buffer, "%.1f %s", v, kUnits[e - 1]);
    std::string text = buffer;
    for (size_t at; (at = text.find(".0")) != std::string::npos;) text.erase(at, 2);
    return text;
  }
  std::snprintf(buffer, sizeof buffer, "%.0f %s", v, kUnits[e - 1]);
  return buffer;
}

float runShare(std::int64_t sum, std::int64_t total) {
  auto scaled = static_cast<float>(checkedMul(sum / 1048576, 100));
  return scaled / static_cast<float>(total / 1048576) / 100.0f;
}

float fastShare(std::int64_t sum, std::int64_t total) {
  return static_cast<float>(sum / 1048576) * 100.0f / static_cast<float>(total / 1048576) / 100.0f;
}

std::int64_t usedPercentage(std::int64_t total, std::int64_t importantAvailable) {
  if (total == 0) fatalError("Division by zero", "Nimbrel/StorageAnalysisVC", 0);
  return checkedMul(checkedSub(total, importantAvailable), 100) / total;
}

std::int64_t checkedAdd(std::int64_t a, std::int64_t b) {
  std::int64_t r;
  if (__builtin_add_overflow(a, b, &r)) arithmeticOverflow();
  return r;
}

std::int64_t checkedSub(std::int64_t a, std::int64_t b) {
  std::int64_t r;
  if (__builtin_sub_overflow(a, b, &r)) arithmeticOverflow();
  return r;
}

std::int64_t checkedMul(std::int64_t a, std::int64_t b) {
  std::int64_t r;
  if (__builtin_mul_overflow(a, b, &r)) arithmeticOverflow();
  return r;
}

}  // namespace nimbrel
