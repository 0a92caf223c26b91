#pragma once

#include "backends/desktop/ShareSurface.h"

namespace nimbrel::shell {

// The share activities' way into the desktop session: the Qt clipboard, Qt's file chooser (the
// portal's where one runs), and the session bus for the OpenURI portal and the file manager.
class QtShareSurface : public desktop::ShareSurface {
 public:
  void putOnClipboard(const std::vector<std::string>& uris, const std::string& text) override;
  void chooseFolder(std::function<void(std::optional<std::string>)> chosen) override;
  void openWithChooser(const std::string& uri, std::function<void(bool)> answered) override;
  void showItems(const std::vector<std::string>& uris, std::function<void(bool)> answered) override;
};

}  // namespace nimbrel::shell
