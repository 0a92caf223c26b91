#pragma once

#include <string>
#include <vector>

enum NSSearchPathDirectory : int {
  NSLibraryDirectory = 5, NSDocumentDirectory = 9, NSCachesDirectory = 13,
  NSApplicationSupportDirectory = 14
};
enum NSSearchPathDomainMask : int { NSUserDomainMask = 1 };

// The application's home: a temporary folder under the simulator, the XDG data folder on the
// desktop. Set by the backend at start; empty until then.
std::string NSHomeDirectory();
void setApplicationHomeDirectory(std::string path);

// The folders of the home for each directory kind; an empty list when no home is known or for a
// domain other than the user's.
std::vector<std::string> NSSearchPathForDirectoriesInDomains(NSSearchPathDirectory directory,
                                                             NSSearchPathDomainMask domain,
                                                             bool expandTilde);
