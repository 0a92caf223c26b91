#pragma once

#include <QVariantMap>

#include "backends/desktop/ShareSurface.h"

class QMimeData;

namespace nimbrel::shell {

// The share activities' way into the desktop session: the Qt clipboard, Qt's file chooser (the
// portal's where one runs), and the session bus for the OpenURI portal and the file manager.
class QtShareSurface : public desktop::ShareSurface {
 public:
  void putOnClipboard(const std::vector<std::string>& uris, const std::string& text) override;
  void chooseFolder(std::function<void(std::optional<std::string>)> chosen) override;
  void openWithChooser(const std::string& uri, std::function<void(bool)> answered) override;
  void showItems(const std::vector<std::string>& uris, std::function<void(bool)> answered) override;

  // Files as a paste or a drop into a file manager reads them: text/uri-list, GNOME's copied-files
  // form, and `text` as plain text. The clipboard takes the first; a QML Drag the second.
  static QMimeData* filesMimeData(const std::vector<std::string>& uris, const std::string& text);
  static QVariantMap filesMimeMap(const std::vector<std::string>& uris, const std::string& text);
};

}  // namespace nimbrel::shell
