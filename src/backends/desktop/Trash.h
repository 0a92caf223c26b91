#pragma once

#include <optional>
#include <string>

namespace nimbrel::desktop {

// The freedesktop trash: a file goes to <trash>/files/<name> beside <trash>/info/<name>.trashinfo
// holding its escaped original path and the deletion date, by rename only, so the file's data is
// never lost. The home trash serves files on the home's device; a file on another device goes to
// $topdir/.Trash-$uid of its own mount.
class Trash {
 public:
  struct Moved {
    std::string trashed;  // where the file is now
    std::string info;     // its .trashinfo
  };

  // `homeTrash`: $XDG_DATA_HOME/Trash.
  explicit Trash(std::string homeTrash);

  // Moves the file or folder; none when it cannot be moved without copying.
  std::optional<Moved> moveToTrash(const std::string& path) const;
  // Puts a trashed entry back where it was (undo of a change that failed part way).
  bool restore(const Moved& moved, const std::string& originalPath) const;

  const std::string& homeTrash() const { return home_; }

 private:
  std::optional<Moved> moveInto(const std::string& trash, const std::string& path, const std::string& infoPath) const;
  std::string home_;
};

}  // namespace nimbrel::desktop
