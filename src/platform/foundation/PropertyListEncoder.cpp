#include "platform/foundation/PropertyListEncoder.h"

#include "platform/foundation/BinaryPropertyList.h"

Result<Data> PropertyListEncoder::encode(const PlistValue& value) const {
  return BinaryPropertyList::write(value);
}
