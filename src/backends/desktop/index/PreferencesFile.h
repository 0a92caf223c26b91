#pragma once

#include <string>

#include "platform/foundation/PreferencesStore.h"

namespace nimbrel::desktop {

// The standard preferences as one binary property list, written atomically: a temporary file in
// the same folder (mode 0600), fsync, rename over the old file, fsync of the folder. A kill at any
// moment leaves the old or the new file whole. A file that cannot be read is kept aside, not lost.
class PreferencesFile final : public PreferencesStore {
 public:
  explicit PreferencesFile(std::string path);

  // $XDG_CONFIG_HOME/nimbrel/preferences.plist, or ~/.config/nimbrel/preferences.plist.
  static std::string defaultPath();

  PlistValue::Dictionary load() override;
  bool save(const PlistValue::Dictionary& values) override;
  const std::string& path() const { return path_; }
  // Where the last load kept a file it could not read; empty when it kept none.
  const std::string& keptAside() const { return keptAside_; }
  // A name beside `path` for something unreadable, marked with the time, that no file has yet.
  static std::string asidePath(const std::string& path);

 private:
  void removeStaleTemporaries() const;
  std::string path_;
  std::string keptAside_;
};

}  // namespace nimbrel::desktop
