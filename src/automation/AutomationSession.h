#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "automation/AutomationHost.h"

namespace nimbrel {

// The automation protocol: one JSON request in, one JSON response out. While a session lives, the
// program's log lines are kept for `log` (and copied to standard error) instead of going to
// standard output.
class AutomationSession {
 public:
  explicit AutomationSession(AutomationHost& host);
  ~AutomationSession();
  AutomationSession(const AutomationSession&) = delete;
  AutomationSession& operator=(const AutomationSession&) = delete;

  nlohmann::json handle(const nlohmann::json& request);
  // A request line to a response line; malformed input gets an error response.
  std::string handleLine(const std::string& line);

 private:
  nlohmann::json action(const nlohmann::json& request);
  nlohmann::json touch(const nlohmann::json& request, bool longPress);
  nlohmann::json gesture(const nlohmann::json& request);
  nlohmann::json menu(const nlohmann::json& request);
  nlohmann::json alert(const nlohmann::json& request);
  nlohmann::json sheet(const nlohmann::json& request);
  nlohmann::json picker(const nlohmann::json& request);
  nlohmann::json ad(const nlohmann::json& request);
  nlohmann::json prefs();
  nlohmann::json state();
  nlohmann::json log();

  AutomationHost& host_;
  struct LogBuffer {
    std::mutex mutex;
    std::vector<std::string> lines;
  };
  std::shared_ptr<LogBuffer> log_ = std::make_shared<LogBuffer>();
};

}  // namespace nimbrel
