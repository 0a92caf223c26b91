#pragma once

#include "platform/uikit/DocumentPickerSource.h"

namespace nimbrel::desktop {

// The window answers the picker with the desktop's own file chooser; a script names an existing
// file by its absolute path instead.
class DesktopDocumentPicker : public DocumentPickerSource {
 public:
  std::vector<std::string> offeredNames() const override { return {}; }
  Result<URL> handOver(const std::string& path) override;
};

}  // namespace nimbrel::desktop
