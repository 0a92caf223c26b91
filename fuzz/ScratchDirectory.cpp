#include "ScratchDirectory.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>

namespace fs = std::filesystem;

ScratchDirectory::ScratchDirectory() {
  std::error_code ec;
  fs::path base = fs::temp_directory_path(ec);
  if (ec) base = "/tmp";
  path_ = (base / ("nimbrel-fuzz-" + std::to_string(::getpid()))).string();
  fs::create_directories(path_);
  ::setenv("TMPDIR", path_.c_str(), 1);
}

void ScratchDirectory::empty() {
  std::error_code ec;
  for (fs::directory_iterator it(path_, ec), end; !ec && it != end; it.increment(ec)) {
    fs::remove_all(it->path(), ec);
  }
}
