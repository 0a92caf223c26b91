#pragma once

#include "platform/foundation/Data.h"
#include "platform/foundation/PlistValue.h"
#include "platform/foundation/Result.h"

// Turns a property list into bytes; binary is the platform's format for what it stores.
class PropertyListEncoder {
 public:
  Result<Data> encode(const PlistValue& value) const;
};
