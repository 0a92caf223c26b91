#include "HeadlessHost.h"

#include "platform/foundation/NSPathUtilities.h"

namespace nimbrel {

double HeadlessHost::elapsed() const {
  return platform_.runLoop().elapsed();
}

void HeadlessHost::settle() {
  platform_.runLoop().runUntilIdle();
}

void HeadlessHost::advance(double seconds) {
  platform_.runLoop().advance(seconds);
}

nlohmann::json HeadlessHost::paths() const {
  std::string documents = NSSearchPathForDirectoriesInDomains(NSDocumentDirectory, NSUserDomainMask, true).front();
  return {{"home", NSHomeDirectory()},
          {"documents", documents},
          {"importedFiles", documents + "/Nimbrel/importedFiles"},
          {"preferences", nullptr}};
}

std::optional<std::string> HeadlessHost::screenshot(const std::string&) {
  return "the headless runner has no window to take a picture of";
}

}  // namespace nimbrel
