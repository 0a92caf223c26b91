#pragma once

#include <string>
#include <string_view>

#include "platform/foundation/PlistValue.h"
#include "platform/foundation/Result.h"

// The JSON form of a property list, exact both ways so that a file can be turned into JSON,
// edited by hand and turned back without loss.
//
// Dictionaries are objects in key order, arrays are arrays, strings and booleans are
// themselves. Integers are JSON integers; reals always carry a fraction or an exponent so
// they read back as reals, with enough digits to give back the same double. Dates are
// {"$date": seconds since 2001-01-01 UTC} and data is {"$data": "<base64>"}, which is why
// those two keys cannot be dictionary keys here. What JSON cannot hold (NaN, infinities)
// and what a property list cannot hold (null, integers beyond 64 bits) are errors.
class PlistJson {
 public:
  static constexpr size_t kMaxNesting = 512;

  // Indented by two spaces, without a final newline.
  static Result<std::string> write(const PlistValue& value);
  static Result<PlistValue> read(std::string_view json);
};
