#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/foundation/Date.h"
#include "platform/photos/PHAsset.h"

namespace nimbrel {

// The asset's "filename" value; none when it has none or it is no string.
std::optional<std::string> assetFileName(const PHAsset& asset);

// The first resource's "fileSize", passed through a 32-bit float: from 2^24 bytes up only the 24
// leading bits are kept, cut toward zero. An asset without resources or without that value ends
// the process.
std::uint64_t assetFileSize(const PHAsset& asset);

// A byte count read through NSNumber as a 32-bit float, as `assetFileSize` reads it; a negative
// one ends the process (reported at `file`, `line`).
std::uint64_t bytesThroughFloat(std::int64_t bytes, const char* file, int line);

// `assetFileSize` in binary units ("2.29 MB").
std::string assetSizeText(const PHAsset& asset);

// The first resource's "fileSize" in whole thousands of bytes, without the float step.
long assetSizeInKB(const PHAsset& asset);

// "d MMM yyyy HH:mm" in the process's locale and time zone.
std::string listDateText(Date date);

}  // namespace nimbrel
