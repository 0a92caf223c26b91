#pragma once

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/foundation/Data.h"
#include "platform/foundation/PlistValue.h"

namespace plist_test {

// Stricter than ==: doubles compare by bit pattern (NaN, -0.0), dictionaries in order.
inline ::testing::AssertionResult Identical(const PlistValue& a,
                                            const PlistValue& b,
                                            const std::string& path = "root") {
  auto differ = [&](const std::string& why) {
    return ::testing::AssertionFailure() << path << ": " << why;
  };
  if (a.type() != b.type()) {
    return differ(std::string(plistTypeName(a.type())) + " vs " + plistTypeName(b.type()));
  }
  switch (a.type()) {
    case PlistValue::Type::real:
      if (std::bit_cast<std::uint64_t>(a.real()) != std::bit_cast<std::uint64_t>(b.real())) {
        return differ(std::to_string(a.real()) + " vs " + std::to_string(b.real()));
      }
      break;
    case PlistValue::Type::date: {
      double x = a.date().timeIntervalSinceReferenceDate;
      double y = b.date().timeIntervalSinceReferenceDate;
      if (std::bit_cast<std::uint64_t>(x) != std::bit_cast<std::uint64_t>(y)) {
        return differ("date " + std::to_string(x) + " vs " + std::to_string(y));
      }
      break;
    }
    case PlistValue::Type::array: {
      const auto& x = a.array();
      const auto& y = b.array();
      if (x.size() != y.size())
        return differ("array sizes differ");
      for (size_t i = 0; i < x.size(); ++i) {
        auto r = Identical(x[i], y[i], path + "[" + std::to_string(i) + "]");
        if (!r)
          return r;
      }
      break;
    }
    case PlistValue::Type::dictionary: {
      const auto& x = a.dictionary();
      const auto& y = b.dictionary();
      if (x.size() != y.size())
        return differ("dictionary sizes differ");
      for (size_t i = 0; i < x.size(); ++i) {
        if (x[i].first != y[i].first)
          return differ("key " + x[i].first + " vs " + y[i].first);
        auto r = Identical(x[i].second, y[i].second, path + "." + x[i].first);
        if (!r)
          return r;
      }
      break;
    }
    default:
      if (!(a == b))
        return differ("values differ");
  }
  return ::testing::AssertionSuccess();
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
