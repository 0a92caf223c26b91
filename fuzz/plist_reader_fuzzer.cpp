// Arbitrary bytes into the binary property-list reader. Whatever it accepts must write back
// and read again to the very same value, and writing that again must give the same bytes.

#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "platform/foundation/BinaryPropertyList.h"

namespace {

// Doubles by bit pattern (NaN, -0.0) and dictionaries in order: nothing may change at all.
bool identical(const PlistValue& a, const PlistValue& b) {
  if (a.type() != b.type())
    return false;
  switch (a.type()) {
    case PlistValue::Type::real:
      return std::bit_cast<std::uint64_t>(a.real()) == std::bit_cast<std::uint64_t>(b.real());
    case PlistValue::Type::date:
      return std::bit_cast<std::uint64_t>(a.date().timeIntervalSinceReferenceDate) ==
             std::bit_cast<std::uint64_t>(b.date().timeIntervalSinceReferenceDate);
    case PlistValue::Type::array: {
      const auto& x = a.array();
      const auto& y = b.array();
      if (x.size() != y.size())
        return false;
      for (size_t i = 0; i < x.size(); ++i) {
        if (!identical(x[i], y[i]))
          return false;
      }
      return true;
    }
    case PlistValue::Type::dictionary: {
      const auto& x = a.dictionary();
      const auto& y = b.dictionary();
      if (x.size() != y.size())
        return false;
      for (size_t i = 0; i < x.size(); ++i) {
        if (x[i].first != y[i].first || !identical(x[i].second, y[i].second))
          return false;
      }
      return true;
    }
    default:
      return a == b;
  }
}

[[noreturn]] void broken(const char* what, const std::string& detail = {}) {
  std::fprintf(stderr, "plist_reader_fuzzer: %s %s\n", what, detail.c_str());
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  auto first = BinaryPropertyList::read(data, size);
  if (!first.ok())
    return 0;
  auto bytes = BinaryPropertyList::write(*first);
  if (!bytes.ok())
    broken("cannot write what was read:", bytes.error());
  auto second = BinaryPropertyList::read(*bytes);
  if (!second.ok())
    broken("cannot read what was written:", second.error());
  if (!identical(*first, *second))
    broken("the value changed on the way through");
  auto again = BinaryPropertyList::write(*second);
  if (!again.ok() || *again != *bytes)
    broken("writing the same value gave other bytes");
  return 0;
}
