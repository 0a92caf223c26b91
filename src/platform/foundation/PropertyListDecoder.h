#pragma once

#include "platform/foundation/Data.h"
#include "platform/foundation/PlistValue.h"
#include "platform/foundation/Result.h"

// Reads back what PropertyListEncoder wrote, or any well-formed binary property list.
class PropertyListDecoder {
 public:
  Result<PlistValue> decode(const Data& data) const;
};
