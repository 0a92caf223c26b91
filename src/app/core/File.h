#pragma once

#include <string>

#include "app/core/FileType.h"
#include "platform/foundation/Date.h"
#include "platform/foundation/PlistValue.h"
#include "platform/foundation/Result.h"
#include "platform/foundation/URL.h"

namespace nimbrel {

// Why a stored record could not be read back, in the platform's decoding-error kinds.
struct DecodingError {
  enum class Kind { keyNotFound, typeMismatch, dataCorrupted };
  Kind kind;
  std::string debugDescription;
  // The sentence the platform gives a person for this kind of failure.
  std::string localizedDescription() const;
};

// One remembered item: where it is, when it was touched, and which kind it is. Records are
// compared by `url` alone where the lists compare them; there is no equality of records.
struct File {
  URL url;
  Date openingDate;
  FileType filetype;

  // The keyed form: {"url": {"relative": <absolute string>}, "openingDate": <date>,
  // "filetype": <raw value>}.
  PlistValue encode() const;
  // Strict: a missing key, a wrong type, or a "filetype" outside the four kinds is an error.
  static std::variant<File, DecodingError> decode(const PlistValue& value);
};

// The synthetic addresses of photo-library items: "assets-library://asset/asset.JPG?id=<id>&extJPG"
// (and .MOV / &extMOV for videos), where <id> is the local identifier up to its first "/".
std::string assetAddress(const std::string& localIdentifier, FileType kind);

}  // namespace nimbrel
