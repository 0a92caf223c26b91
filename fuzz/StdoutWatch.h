#pragma once

#include <string>

// Catches anything the code under test writes to standard output, which in automation mode is
// the protocol channel: file descriptor 1 is pointed at an anonymous file that is read back and
// emptied after every input.
class StdoutWatch {
 public:
  StdoutWatch();
  // What was written since the last call.
  std::string take();

 private:
  int fd_ = -1;
};
