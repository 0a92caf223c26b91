#pragma once

#include <string>
#include <vector>

#include "platform/foundation/PlistValue.h"

// The program's two remembered lists inside a preferences dictionary (a preferences file, or the
// values the desktop set aside because the program could not read them): what each record says,
// and the lists cut down to the records the program reads.
class ListMender {
 public:
  struct Outcome {
    std::string key;
    size_t kept = 0, dropped = 0;
    bool removed = false;  // nothing in it could be read: the value went
  };

  // Every list value, record by record, as people read it; "no lists" when there is none.
  static std::string describe(const PlistValue::Dictionary& values);
  // Each list value becomes the records the program reads, re-encoded as the program writes them;
  // one with no list left in it is removed. Other values stay as they are.
  static std::vector<Outcome> mend(PlistValue::Dictionary& values);
};
