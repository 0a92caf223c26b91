#include "FatalEnd.h"

#include <string>

#include "platform/foundation/FatalError.h"

// Defined here, the platform library's own definitions are never pulled from its archive.
void fatalError(std::string_view message, std::string_view, int) {
  throw FatalEnd{std::string(message)};
}

void fatalError(std::string_view message, FatalErrorLocation) {
  throw FatalEnd{std::string(message)};
}
