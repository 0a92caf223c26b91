#pragma once

#include <optional>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace nimbrel {

// What the automation protocol needs of the program that runs it: the headless runner over the
// simulated platform, or the Qt application.
class AutomationHost {
 public:
  virtual ~AutomationHost() = default;
  // Seconds since the program started (virtual in the headless runner).
  virtual double elapsed() const = 0;
  // Runs every task that is due now, background work included, without moving time.
  virtual void settle() = 0;
  // Runs due tasks while time moves on by `seconds`.
  virtual void advance(double seconds) = 0;
  // home, documents, importedFiles, preferences.
  virtual nlohmann::json paths() const = 0;
  virtual std::vector<std::string> sdkCalls() const = 0;
  // Writes the window's picture; the reason when it cannot.
  virtual std::optional<std::string> screenshot(const std::string& path) = 0;
};

}  // namespace nimbrel
