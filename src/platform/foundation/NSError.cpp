#include "platform/foundation/NSError.h"

#include <cstring>

std::string NSError::debugDescription() const {
  std::string out = "Error Domain=" + domain + " Code=" + std::to_string(code) + " \"" +
                    localizedDescription + "\"";
  if (userInfo.empty() && !underlyingError) return out;
  out += " UserInfo={";
  bool first = true;
  for (const auto& [k, v] : userInfo) {
    if (!first) out += ", ";
    first = false;
    out += k + "=" + v;
  }
  if (underlyingError) {
    if (!first) out += ", ";
    out += "NSUnderlyingError={" + underlyingError->debugDescription() + "}";
  }
  out += "}";
  return out;
}

NSError NSError::posix(int errnoValue) {
  return NSError{NSPOSIXErrorDomain, errnoValue, std::strerror(errnoValue), {}, nullptr};
}
