#pragma once

#include <string>

// The locale the process formats in, by identifier ("en_US", "de_DE", ...). The platform backend
// sets it once at start from the system; until then it is "en_US". Safe from any thread.
class NSLocale {
 public:
  static std::string currentLocale();
  static void setCurrentLocaleIdentifier(std::string identifier);
};
