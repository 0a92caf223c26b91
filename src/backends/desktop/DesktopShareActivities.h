#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "backends/desktop/ShareSurface.h"
#include "platform/uikit/ShareActivities.h"

namespace nimbrel::desktop {

// The desktop share sheet's activities and their rules: Copy, Save to…, Open with…, Show in
// folder, Email. Pictures handed over as pixels become JPEG files named after their asset first.
// The session's own parts (clipboard, chooser, portals) go through a ShareSurface; without one
// (a headless run) Copy is not offered and Save to… needs its folder given.
class DesktopShareActivities : public ShareActivities {
 public:
  static constexpr const char* kCopy = "Copy";
  static constexpr const char* kSaveTo = "Save to…";
  static constexpr const char* kOpenWith = "Open with…";
  static constexpr const char* kShowInFolder = "Show in folder";
  static constexpr const char* kEmail = "Email";

  struct Options {
    // Where pictures are written as files; each share gets a new folder under it.
    std::string temporaryFolder;
    std::function<bool(const std::vector<std::string>& argv)> run;
    std::function<bool(const std::string& program)> hasProgram;
  };

  // Temporary files under $XDG_RUNTIME_DIR (else /tmp), programs started from PATH.
  static Options defaultOptions();

  DesktopShareActivities(std::shared_ptr<ShareSurface> surface, Options options);

  std::vector<std::string> names(const std::vector<ShareItem>& items) const override;
  bool perform(const std::string& name, const std::vector<ShareItem>& items,
               const std::optional<std::string>& folder) override;
  DraggedFiles dragFiles(const std::vector<ShareItem>& items) const override;

  // The message at the end of a Save to…
  static std::string savedMessage(int saved, int total, const std::string& folder);

 private:
  // The items' files, pictures written out first.
  std::vector<std::string> files(const std::vector<ShareItem>& items) const;
  std::string pictureFile(const UIImage& image, std::string& folder) const;
  // The files behind items dragged out of a list: a file URL's own, a song's, a photo-library
  // item's (written out as Copy writes pictures when the library has it only as pixels), and
  // pictures handed over as pixels. Missing files and text are left out.
  std::vector<std::string> filesBehind(const std::vector<ShareItem>& items) const;
  std::string fileBehind(const URL& url, std::string& pictures) const;
  // The clipboard's and a drag's form of files: URIs, and `text` (else the paths) as text.
  static DraggedFiles handedOver(const std::vector<std::string>& files, std::string text);
  static void saveInto(const std::string& folder, std::vector<std::string> files);

  std::shared_ptr<ShareSurface> surface_;
  Options options_;
};

}  // namespace nimbrel::desktop
