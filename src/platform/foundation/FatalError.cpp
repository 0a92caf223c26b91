#include "platform/foundation/FatalError.h"

#include <cstdio>
#include <cstdlib>
#include <string>

void fatalError(std::string_view message, std::string_view file, int line) {
  std::string text = "Fatal error: ";
  text.append(message);
  text.append(": file ");
  text.append(file);
  text.append(", line ");
  text.append(std::to_string(line));
  text.push_back('\n');
  std::fflush(stdout);
  std::fwrite(text.data(), 1, text.size(), stderr);
  std::fflush(stderr);
  std::abort();
}

void fatalError(std::string_view message, FatalErrorLocation where) {
  std::string_view file = where.file_name();
  // Report the path from the source root, as a reader of the line would look it up.
  if (auto pos = file.rfind("/src/"); pos != std::string_view::npos) file.remove_prefix(pos + 5);
  fatalError(message, file, static_cast<int>(where.line()));
}
