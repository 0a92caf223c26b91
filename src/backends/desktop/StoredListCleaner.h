#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/Data.h"
#include "platform/foundation/PlistValue.h"

namespace nimbrel::desktop {

// The program trusts its two remembered lists: one it cannot decode, or an entry whose photo or
// song has gone, ends it, and on a phone that happens again at every start. On the desktop files
// are deleted by other programs, so before the program reads the lists, and whenever the library
// sees files go, this sets aside stored lists that do not decode (into a file beside the
// preferences, value by value) and drops entries whose file is gone: from the preferences, in one
// atomic write, and through `forget` from the program's memory copies. Main thread.
class StoredListCleaner {
 public:
  struct Rules {
    std::vector<std::string> keys;  // the preferences keys of the lists
    // Why the program would refuse these stored bytes; none when it reads them.
    std::function<std::optional<std::string>(const Data&)> decodeError;
    // The addresses that left the lists.
    std::function<void(const std::vector<std::string>& addresses)> forget;
  };
  struct Outcome {
    std::string keptAside;  // the file the undecodable values went to; empty when none did
    std::vector<std::string> removed;
  };

  StoredListCleaner(std::string preferencesPath, Rules rules);

  Outcome clean();

  // Whether the file behind a stored record has gone, as the program's readers would find it.
  static bool isGone(const PlistValue& record);

 private:
  std::string preferencesPath_;
  Rules rules_;
};

}  // namespace nimbrel::desktop
