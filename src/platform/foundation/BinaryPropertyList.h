#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/foundation/Data.h"
#include "platform/foundation/PlistValue.h"
#include "platform/foundation/Result.h"

// The "bplist00" property-list format, as the phone's preferences and persisted lists use it.
//
// The reader is strict and meant for files that may have been damaged or made to harm:
// it refuses rather than guesses, never recurses deeper than kMaxNesting containers, and
// refuses to materialise more than kOutputBudgetFloor + kOutputBudgetFactor * input size
// bytes of values, so that a small file whose objects are shared many times cannot blow up.
class BinaryPropertyList {
 public:
  static constexpr size_t kMaxNesting = 512;
  static constexpr size_t kOutputBudgetFloor = 8u << 20;
  static constexpr size_t kOutputBudgetFactor = 64;

  static Result<Data> write(const PlistValue& root);
  static Result<PlistValue> read(const std::uint8_t* bytes, size_t size);
  static Result<PlistValue> read(const Data& bytes) { return read(bytes.data(), bytes.size()); }
};
