#pragma once

#include <string>

#include "platform/foundation/Date.h"
#include "platform/foundation/PlistValue.h"

// A property list for people to read, laid out as Apple's `plutil -p` does:
//   {
//     "filetype" => "docs"
//     "openingDate" => 2026-03-01 09:30:00 +0000
//     "items" => [
//       0 => 42
//     ]
//   }
// Dictionaries keep the file's key order. Reals print with the digits that give back the
// same double and always show a fraction or exponent; data prints in full.
class PlistPrinter {
 public:
  // Ends with a newline.
  static std::string print(const PlistValue& value);
  // "2026-03-01 09:30:00 +0000", in UTC, with the seconds' fraction dropped.
  static std::string formatDate(Date date);
};
