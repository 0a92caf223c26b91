#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Raw bytes, as the platform's Data.
using Data = std::vector<std::uint8_t>;

namespace Base64 {
std::string encode(const Data& bytes);
// Standard alphabet; padding optional; whitespace ignored. No value for any other character.
std::optional<Data> decode(std::string_view text);
}  // namespace Base64
