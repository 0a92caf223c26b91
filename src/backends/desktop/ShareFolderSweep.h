#pragma once

#include <chrono>
#include <string>

namespace nimbrel::desktop {

// The folders a share writes pictures into must outlive the share (a paste, a drop or a mail
// reads them later), so nothing removes them when the sheet closes. A start of the program
// removes those of earlier shares old enough that nobody still reads them.
class ShareFolderSweep {
 public:
  static constexpr std::chrono::hours kKeptFor{24};
  static constexpr const char* kPrefix = "nimbrel-share-";

  // Removes the share folders directly under `parent` last changed before `now - keptFor`;
  // returns how many went.
  static int removeOld(const std::string& parent, std::chrono::system_clock::time_point now,
                       std::chrono::seconds keptFor = kKeptFor);
};

}  // namespace nimbrel::desktop
