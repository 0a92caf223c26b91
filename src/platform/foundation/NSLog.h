#pragma once

#include <functional>
#include <string>
#include <string_view>

// The program's one log function: free-form lines, standard output by default.
void NSLog(std::string_view line);

// Where log lines go. The automation mode keeps them for its `log` operation.
class LogSink {
 public:
  using Writer = std::function<void(std::string_view)>;
  // Replaces the writer; an empty writer restores standard output. Returns the previous one.
  static Writer install(Writer writer);
};
