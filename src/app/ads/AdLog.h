#pragma once

#include <string>

#include "platform/foundation/NSLog.h"

namespace nimbrel {

// The ad callbacks log their name as a debug print: the text in double quotes.
inline void debugPrintLine(const std::string& text) {
  NSLog("\"" + text + "\"");
}

}  // namespace nimbrel
