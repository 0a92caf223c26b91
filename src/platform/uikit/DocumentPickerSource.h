#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/foundation/Result.h"
#include "platform/foundation/URL.h"

// Where the files a document picker offers come from: the simulator's list, or the desktop's own
// file chooser (which answers the picker itself and offers nothing by name).
class DocumentPickerSource {
 public:
  virtual ~DocumentPickerSource() = default;
  // The names a script may pick.
  virtual std::vector<std::string> offeredNames() const = 0;
  // Hands the named file over, outside the app home, as the platform does after a pick.
  virtual Result<URL> handOver(const std::string& name) = 0;

  // None until a backend installs one.
  static std::shared_ptr<DocumentPickerSource> current();
  static void install(std::shared_ptr<DocumentPickerSource> source);
};
