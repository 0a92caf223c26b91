#pragma once

#include <source_location>
#include <string_view>

// The deliberate end of the process: one line on standard error in the form
// "Fatal error: <message>: file <file>, line <line>", then abort().
[[noreturn]] void fatalError(std::string_view message, std::string_view file, int line);

// For checks whose place in our own sources is the useful location.
[[noreturn]] void fatalError(std::string_view message,
                             std::source_location where = std::source_location::current());
