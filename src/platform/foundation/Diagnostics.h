#pragma once

#include <functional>
#include <string>
#include <string_view>

// What the platform says about its own state (a damaged file kept aside, an entry that left a
// list). Unlike the program's log lines these never touch standard output, which is the protocol
// channel in automation mode: each line goes to standard error, to the log file when one is set,
// and to the listener (the automation log). Lines reported before a listener is there are kept for
// it. Safe from any thread.
class Diagnostics {
 public:
  using Listener = std::function<void(std::string_view)>;

  static void report(std::string_view line);
  // Hears every line from now on, after the ones kept so far; an empty listener stops.
  static void listen(Listener listener);
  // Appends each later line to this file; empty: none.
  static void setLogFile(std::string path);
};
