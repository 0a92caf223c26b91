#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/Data.h"
#include "platform/foundation/PlistValue.h"

namespace plist_test {

inline std::string hex(const std::uint8_t* p, size_t n) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string s;
  s.reserve(2 * n);
  for (size_t i = 0; i < n; ++i) {
    s += kDigits[p[i] >> 4];
    s += kDigits[p[i] & 15];
  }
  return s;
}

inline std::string hex(std::string_view s) {
  return hex(reinterpret_cast<const std::uint8_t*>(s.data()), s.size());
}

inline std::string hexBits(double d) {
  std::uint8_t be[8];
  for (int i = 0; i < 8; ++i)
    be[i] = static_cast<std::uint8_t>(std::bit_cast<std::uint64_t>(d) >> (56 - 8 * i));
  return hex(be, 8);
}

// One line per value, containers first with their size: exact for every value (doubles and
// dates by bit pattern, dictionaries in order), and the form plistlib_interop.py reads.
inline void manifest(const PlistValue& v, std::string& out) {
  switch (v.type()) {
    case PlistValue::Type::boolean:
      out += v.boolean() ? "b 1\n" : "b 0\n";
      break;
    case PlistValue::Type::integer:
      out += "i " + std::to_string(v.integer()) + "\n";
      break;
    case PlistValue::Type::real:
      out += "r " + hexBits(v.real()) + "\n";
      break;
    case PlistValue::Type::date:
      out += "t " + hexBits(v.date().timeIntervalSinceReferenceDate) + "\n";
      break;
    case PlistValue::Type::data:
      out += "x " + hex(v.data().data(), v.data().size()) + "\n";
      break;
    case PlistValue::Type::string:
      out += "s " + hex(v.string()) + "\n";
      break;
    case PlistValue::Type::array:
      out += "a " + std::to_string(v.array().size()) + "\n";
      for (const auto& item : v.array())
        manifest(item, out);
      break;
    case PlistValue::Type::dictionary:
      out += "d " + std::to_string(v.dictionary().size()) + "\n";
      for (const auto& [key, value] : v.dictionary()) {
        out += "s " + hex(key) + "\n";
        manifest(value, out);
      }
      break;
  }
}

// Stricter than ==: doubles compare by bit pattern (NaN, -0.0), dictionaries in order.
inline ::testing::AssertionResult Identical(const PlistValue& a, const PlistValue& b) {
  std::string x, y;
  manifest(a, x);
  manifest(b, y);
  if (x == y)
    return ::testing::AssertionSuccess();
  auto at = std::mismatch(x.begin(), x.end(), y.begin(), y.end()).first - x.begin();
  size_t begin = at == 0 ? 0 : x.rfind('\n', static_cast<size_t>(at) - 1) + 1;  // npos + 1 is 0
  auto line = [begin](const std::string& s) { return s.substr(begin, s.find('\n', begin) - begin); };
  return ::testing::AssertionFailure()
         << "manifest line " << std::count(x.begin(), x.begin() + static_cast<long>(begin), '\n') + 1
         << " differs: \"" << line(x) << "\" vs \"" << line(y) << "\"";
}

inline void putBE(Data& out, std::uint64_t v, int n) {
  for (int i = n - 1; i >= 0; --i)
    out.push_back(static_cast<std::uint8_t>(v >> (8 * i)));
}

// A hand-made file: objects given as raw bytes, in the order of their numbers.
struct RawPlist {
  std::vector<Data> objects;
  std::uint8_t refSize = 1;
  std::uint8_t offsetSize = 1;
  std::uint64_t top = 0;

  Data build() const {
    Data out{'b', 'p', 'l', 'i', 's', 't', '0', '0'};
    std::vector<std::uint64_t> offsets;
    for (const Data& o : objects) {
      offsets.push_back(out.size());
      out.insert(out.end(), o.begin(), o.end());
    }
    std::uint64_t table = out.size();
    for (auto off : offsets)
      putBE(out, off, offsetSize);
    out.insert(out.end(), 6, 0);
    out.push_back(offsetSize);
    out.push_back(refSize);
    putBE(out, objects.size(), 8);
    putBE(out, top, 8);
    putBE(out, table, 8);
    return out;
  }
};

// Trailer fields of a file, read back for checks.
struct Trailer {
  std::uint8_t offsetSize, refSize;
  std::uint64_t objects, top, tableOffset;
};

inline Trailer trailerOf(const Data& file) {
  const std::uint8_t* t = file.data() + file.size() - 32;
  auto be = [](const std::uint8_t* p) {
    std::uint64_t v = 0;
    for (int i = 0; i < 8; ++i)
      v = (v << 8) | p[i];
    return v;
  };
  return Trailer{t[6], t[7], be(t + 8), be(t + 16), be(t + 24)};
}

}  // namespace plist_test
