#pragma once

#include <string>

// The time zone of the process, by its IANA name ("Europe/Lisbon"). The platform backend sets it
// once at start from the system; until then it is "UTC". Safe from any thread.
class NSTimeZone {
 public:
  static std::string localTimeZone();
  static void setLocalTimeZoneName(std::string name);
};
