#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace nimbrel {

// The volume of the app's home, read afresh at each call.
std::optional<std::int64_t> fileSystemSizeBytes();
std::optional<std::int64_t> fileSystemFreeBytes();
// 0 when the figure cannot be had.
std::int64_t volumeTotalBytes();
std::int64_t importantUsageBytes();

// The decimal capacity text: "999 B", "1 KB", "63.9 GB", "128 GB".
std::string capacityText(std::int64_t bytes);

// A sum's share of the total, in single precision. The run's form multiplies by 100 in integers;
// the fast path's form in float. The two are kept apart on purpose.
float runShare(std::int64_t sum, std::int64_t total);
float fastShare(std::int64_t sum, std::int64_t total);

// (total − important-usage bytes) × 100 / total, truncating; a total of 0 ends the process.
std::int64_t usedPercentage(std::int64_t total, std::int64_t importantAvailable);

// Checked arithmetic: an overflow ends the process, as the accounting's traps do.
std::int64_t checkedAdd(std::int64_t a, std::int64_t b);
std::int64_t checkedSub(std::int64_t a, std::int64_t b);
std::int64_t checkedMul(std::int64_t a, std::int64_t b);

}  // namespace nimbrel
