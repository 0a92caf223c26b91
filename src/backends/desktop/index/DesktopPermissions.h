#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "platform/services/PermissionAuthority.h"

namespace nimbrel::desktop {

// Asks once per kind: the first request presents an alert ("Allow" / "Don't Allow") through the
// main queue, and the answer is kept in a property list in the state folder; later requests, in
// this run or another, answer the kept status. Tracking is never asked: nothing on the desktop
// tracks, so it answers as a system where tracking is restricted does. Statuses are each kind's platform numbers. Owned by
// a shared_ptr (a prompt on its way holds it weakly).
class DesktopPermissions : public PermissionAuthority, public std::enable_shared_from_this<DesktopPermissions> {
 public:
  explicit DesktopPermissions(std::string path, std::string appName = "Nimbrel");

  // Tracking's status: restricted, whatever a file says.
  static constexpr int kTrackingStatus = 1;

  int status(Kind kind) const override;
  void request(Kind kind, std::function<void(int)> answer) override;

  // What "Allow" and "Don't Allow" mean for a kind.
  static int allowedStatus(Kind kind);
  static int refusedStatus(Kind kind);
  static const char* name(Kind kind);
  static std::optional<Kind> kindNamed(const std::string& name);

  // Changes a kept answer outside a prompt (the command-line tool, a settings page); no value
  // forgets it so the next request asks again. False when the file could not be written.
  static bool setStatus(const std::string& path, Kind kind, std::optional<int> status);

 private:
  void finish(Kind kind, int status);

  std::string path_;
  std::string appName_;
  mutable std::mutex mutex_;
  std::map<Kind, int> statuses_;
  std::map<Kind, std::vector<std::function<void(int)>>> waiting_;
};

}  // namespace nimbrel::desktop
