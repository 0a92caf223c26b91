#pragma once

#include <memory>
#include <string>
#include <vector>

#include "backends/sim/Fixture.h"
#include "backends/sim/SimFileDates.h"
#include "platform/uikit/DocumentPickerSource.h"

namespace nimbrel::sim {

// The fixture's picker list. A picked file is made afresh in a folder beside the app home, as the
// platform hands over a copy that lies outside the app's own folders.
class SimDocumentPicker : public DocumentPickerSource {
 public:
  SimDocumentPicker(std::vector<Fixture::Document> offered, std::string folder, std::shared_ptr<SimFileDates> dates);
  std::vector<std::string> offeredNames() const override;
  Result<URL> handOver(const std::string& name) override;

 private:
  std::vector<Fixture::Document> offered_;
  std::string folder_;
  std::shared_ptr<SimFileDates> dates_;
};

}  // namespace nimbrel::sim
