#pragma once

#include <optional>
#include <variant>
#include <vector>

#include "app/core/File.h"
#include "platform/foundation/Data.h"

namespace nimbrel {

// The recent and favourite lists straight to and from their binary property list, without the
// tree of values in between: the bytes are those PropertyListEncoder writes for the records'
// keyed form, and anything the direct reader does not expect goes to the generic decoder, which
// then gives the same records or the same error.
class FileListCodec {
 public:
  static std::optional<Data> encode(const std::vector<File>& files);
  static std::variant<std::vector<File>, DecodingError> decode(const Data& bytes);

  // The generic route, through the keyed form of each record.
  static std::optional<Data> encodeGeneric(const std::vector<File>& files);
  static std::variant<std::vector<File>, DecodingError> decodeGeneric(const Data& bytes);
};

}  // namespace nimbrel
