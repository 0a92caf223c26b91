#pragma once

#include <optional>
#include <string>

#include "platform/foundation/ChangeSignal.h"

// A message of the platform's own to the person at the window (where a damaged file was kept), not
// one of the program's screens: a shell shows it as a banner until it is dismissed. One at a time;
// a later one replaces it. Main thread only.
class UserNotice {
 public:
  static void post(std::string text);
  static const std::optional<std::string>& current();
  // False when there was none.
  static bool dismiss();
  static ChangeSignal& changed();
  static void reset();
};
