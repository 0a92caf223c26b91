#pragma once

#include <optional>
#include <string_view>

namespace nimbrel::sim {

// Seconds since 2001-01-01 UTC for "YYYY-MM-DDTHH:MM:SS[.fff](Z|±HH:MM)", or "YYYY-MM-DD".
// No value for anything else.
std::optional<double> parseIso8601(std::string_view text);

}  // namespace nimbrel::sim
