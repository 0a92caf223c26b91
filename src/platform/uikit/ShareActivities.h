#pragma once

#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/foundation/URL.h"
#include "platform/uikit/UIImage.h"

// What a share sheet's items can be: text, a file's URL, or a picture.
using ShareItem = std::variant<std::string, URL, UIImage>;

// The work a platform's share sheet offers beyond listing its items (copy, save, open...).
// Installed by the desktop platform; none on the sim, whose sheet only lists and closes.
class ShareActivities {
 public:
  virtual ~ShareActivities() = default;
  // The activities' names for these items, in the order a sheet shows them.
  virtual std::vector<std::string> names(const std::vector<ShareItem>& items) const = 0;
  // Starts the named activity on the main thread. `folder` answers a folder question ahead of
  // time (a script has no chooser to click). False when the activity is not offered.
  virtual bool perform(const std::string& name, const std::vector<ShareItem>& items,
                       const std::optional<std::string>& folder) = 0;

  // What a drag of these items out of the program hands the session, in the form Copy puts on the
  // clipboard: the files' URIs, and their paths as text. Empty where the platform hands out no
  // files (the sim). URLs of songs and photo-library items count as the files behind them.
  struct DraggedFiles {
    std::vector<std::string> uris;
    std::string text;
  };
  virtual DraggedFiles dragFiles(const std::vector<ShareItem>& items) const { return {}; }

  static std::shared_ptr<ShareActivities> current();  // may be null
  static void install(std::shared_ptr<ShareActivities> activities);
};
