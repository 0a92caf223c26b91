#pragma once

#include <string>

// A private temporary directory for the simulator's homes (TMPDIR points here), emptied after
// every input: a fatal end inside the simulator's constructor leaves no destructor to clean up.
class ScratchDirectory {
 public:
  ScratchDirectory();
  void empty();

 private:
  std::string path_;
};
