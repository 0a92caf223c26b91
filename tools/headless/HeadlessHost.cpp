#include "HeadlessHost.h"

#include "platform/foundation/NSPathUtilities.h"

namespace nimbrel {

double HeadlessHost::elapsed() const {
  return loop_.elapsed();
}

void HeadlessHost::settle() {
  loop_.runUntilIdle();
}

void HeadlessHost::advance(double seconds) {
  loop_.advance(seconds);
}

nlohmann::json HeadlessHost::paths() const {
  std::string documents = NSSearchPathForDirectoriesInDomains(NSDocumentDirectory, NSUserDomainMask, true).front();
  return {{"home", NSHomeDirectory()},
          {"documents", documents},
          {"importedFiles", documents + "/Nimbrel/importedFiles"},
          {"preferences", preferences_.empty() ? nlohmann::json(nullptr) : nlohmann::json(preferences_)}};
}

std::optional<std::string> HeadlessHost::screenshot(const std::string&) {
  return "the headless runner has no window to take a picture of";
}

}  // namespace nimbrel
