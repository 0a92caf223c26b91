#include "backends/sim/SimDocumentPicker.h"

#include <filesystem>
#include <system_error>

namespace nimbrel::sim {

SimDocumentPicker::SimDocumentPicker(std::vector<Fixture::Document> offered, std::string folder,
                                     std::shared_ptr<SimFileDates> dates)
    : offered_(std::move(offered)), folder_(std::move(folder)), dates_(std::move(dates)) {}

std::vector<std::string> SimDocumentPicker::offeredNames() const {
  std::vector<std::string> names;
  for (const auto& doc : offered_) names.push_back(doc.name);
  return names;
}

Result<URL> SimDocumentPicker::handOver(const std::string& name) {
  for (const auto& doc : offered_) {
    if (doc.name != name) continue;
    std::error_code ec;
    std::filesystem::create_directories(folder_, ec);
    std::string path = folder_ + "/" + name;
    if (!dates_->place(path, doc.size, doc.hasCreationDate ? std::optional<double>(doc.created) : std::nullopt, doc.contents)) {
      return Result<URL>::failure("cannot make the picked file " + path);
    }
    return URL::fileURLWithPath(path);
  }
  return Result<URL>::failure("the picker offers no \"" + name + "\"");
}

}  // namespace nimbrel::sim
