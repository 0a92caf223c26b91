#include "platform/foundation/PropertyListDecoder.h"

#include "platform/foundation/BinaryPropertyList.h"

Result<PlistValue> PropertyListDecoder::decode(const Data& data) const {
  return BinaryPropertyList::read(data);
}
