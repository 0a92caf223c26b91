#pragma once

#include <string>

// What the product's deliberate `fatalError` becomes inside a fuzzer: an exception the target
// catches as the normal end of that input, instead of abort(), which libFuzzer would report as a
// crash. Linking FatalEnd.cpp replaces the platform's fatalError.
struct FatalEnd {
  std::string message;
};
