#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace nimbrel::desktop {

// What the share activities need of the desktop session that plain C++ cannot reach: the
// clipboard, the file chooser and the session bus. A front end implements it; every call and
// answer is on the main thread.
class ShareSurface {
 public:
  virtual ~ShareSurface() = default;
  // File URIs as text/uri-list (and the file managers' copied-files form); `text` as plain text.
  virtual void putOnClipboard(const std::vector<std::string>& uris, const std::string& text) = 0;
  // The desktop's folder chooser; nullopt when the person cancels.
  virtual void chooseFolder(std::function<void(std::optional<std::string>)> chosen) = 0;
  // The OpenURI portal's application chooser for a file; false when no portal answers.
  virtual void openWithChooser(const std::string& uri, std::function<void(bool)> answered) = 0;
  // org.freedesktop.FileManager1.ShowItems; false when no file manager answers.
  virtual void showItems(const std::vector<std::string>& uris, std::function<void(bool)> answered) = 0;
};

}  // namespace nimbrel::desktop
