#pragma once

#include <cstdint>
#include <string>

// The platform's count styles, with its raw values: file and decimal count in 1000s, memory and
// binary in 1024s.
enum class NSByteCountFormatterCountStyle : int { file = 0, memory = 1, decimal = 2, binary = 3 };

// Byte counts as short text in the process locale: "Zero KB", "1 byte", "999 bytes", "1 KB",
// "1.2 MB", "73.2 GB". The unit adapts to the size; KB show no decimals, MB one, larger units two,
// without trailing zeros.
class NSByteCountFormatter {
 public:
  static std::string stringFromByteCount(std::int64_t byteCount,
                                         NSByteCountFormatterCountStyle style);
};

using ByteCountFormatter = NSByteCountFormatter;
