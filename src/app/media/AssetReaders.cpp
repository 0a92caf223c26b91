#include "app/media/AssetReaders.h"

#include <bit>
#include <cmath>

#include "app/media/Units.h"
#include "platform/foundation/FatalError.h"
#include "platform/foundation/NSDateFormatter.h"
#include "platform/photos/PHAssetResource.h"

namespace nimbrel {

namespace {

constexpr const char* kFile = "Nimbrel/PHAsset+Extension";
constexpr int kFileSizeLine = 31;
constexpr int kSizeInKBLine = 45;

// The first resource's "fileSize" value; the process ends when there is no resource or no value.
PlistValue firstResourceFileSize(const PHAsset& asset, int line) {
  auto resources = PHAssetResource::assetResourcesForAsset(asset);
  if (resources.empty()) fatalError("Index out of range", kFile, line);
  auto value = resources.front()->valueForKey("fileSize");
  if (!value) fatalError("Unexpectedly found nil while unwrapping an Optional value", kFile, line);
  if (!value->isInteger() && !value->isReal()) {
    fatalError(std::string("Could not cast value of type '") + plistTypeName(value->type()) + "' to 'NSNumber'",
               kFile, line);
  }
  return *value;
}

float floatTowardZero(std::int64_t v) {
  bool negative = v < 0;
  std::uint64_t magnitude = negative ? 0 - static_cast<std::uint64_t>(v) : static_cast<std::uint64_t>(v);
  int width = std::bit_width(magnitude);
  // Drop what a float's 24-bit significand cannot hold, so the conversion below is exact.
  if (width > 24) magnitude &= ~((std::uint64_t{1} << (width - 24)) - 1);
  float f = static_cast<float>(magnitude);
  return negative ? -f : f;
}

float floatTowardZero(double v) {
  float f = static_cast<float>(v);
  if (std::isfinite(f) && std::fabs(static_cast<double>(f)) > std::fabs(v)) f = std::nextafter(f, 0.0f);
  return f;
}

std::uint64_t unsignedFromFloat(float f, const char* file, int line) {
  if (!std::isfinite(f)) {
    fatalError("Float value cannot be converted to UInt64 because it is either infinite or NaN", file, line);
  }
  if (!(f > -1.0f)) {
    fatalError("Float value cannot be converted to UInt64 because the result would be less than UInt64.min",
               file, line);
  }
  if (f >= 18446744073709551616.0f) {
    fatalError("Float value cannot be converted to UInt64 because the result would be greater than UInt64.max",
               file, line);
  }
  if (f < 1.0f) return 0;
  return static_cast<std::uint64_t>(f);
}

}  // namespace

std::optional<std::string> assetFileName(const PHAsset& asset) {
  auto value = asset.valueForKey("filename");
  if (!value || !value->isString()) return std::nullopt;
  return value->string();
}

std::uint64_t assetFileSize(const PHAsset& asset) {
  auto value = firstResourceFileSize(asset, kFileSizeLine);
  float f = value.isInteger() ? floatTowardZero(value.integer()) : floatTowardZero(value.real());
  return unsignedFromFloat(f, kFile, kFileSizeLine);
}

std::uint64_t bytesThroughFloat(std::int64_t bytes, const char* file, int line) {
  return unsignedFromFloat(floatTowardZero(bytes), file, line);
}

std::string assetSizeText(const PHAsset& asset) {
  return Units(static_cast<std::int64_t>(assetFileSize(asset))).getReadableUnit();
}

long assetSizeInKB(const PHAsset& asset) {
  auto value = firstResourceFileSize(asset, kSizeInKBLine);
  if (value.isInteger()) return static_cast<long>(value.integer() / 1000);
  double whole = std::trunc(value.real());
  if (!std::isfinite(whole) || whole < -9.2e18 || whole > 9.2e18) {
    fatalError("Double value cannot be converted to Int because it is outside the representable range", kFile,
               kSizeInKBLine);
  }
  return static_cast<long>(static_cast<std::int64_t>(whole) / 1000);
}

std::string listDateText(Date date) {
  NSDateFormatter formatter;
  formatter.setDateFormat("d MMM yyyy HH:mm");
  return formatter.stringFromDate(date);
}

}  // namespace nimbrel
