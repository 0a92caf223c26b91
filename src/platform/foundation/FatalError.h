#pragma once

#include <source_location>
#include <string_view>

#ifdef __cpp_lib_source_location
using FatalErrorLocation = std::source_location;
#else
// Clang before 15 lacks the builtin std::source_location needs;
// the older builtins give the caller's file and line the same way as a default argument.
struct FatalErrorLocation {
  static constexpr FatalErrorLocation current(const char* file = __builtin_FILE(),
                                              unsigned line = __builtin_LINE()) {
    return FatalErrorLocation{file, line};
  }
  constexpr const char* file_name() const { return file_; }
  constexpr unsigned line() const { return line_; }
  const char* file_;
  unsigned line_;
};
#endif

// The deliberate end of the process: one line on standard error in the form
// "Fatal error: <message>: file <file>, line <line>", then abort().
[[noreturn]] void fatalError(std::string_view message, std::string_view file, int line);

// For checks whose place in our own sources is the useful location.
[[noreturn]] void fatalError(std::string_view message,
                             FatalErrorLocation where = FatalErrorLocation::current());
