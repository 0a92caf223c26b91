#pragma once

#include "automation/AutomationHost.h"
#include <string>

#include "backends/sim/SimPlatform.h"
#include "platform/foundation/ManualRunLoop.h"

namespace nimbrel {

// The automation host over a manual run loop: the simulated platform, or the desktop platform
// driven on virtual time. No window.
class HeadlessHost : public AutomationHost {
 public:
  explicit HeadlessHost(sim::SimPlatform& platform) : loop_(platform.runLoop()), sim_(&platform) {}
  HeadlessHost(ManualRunLoop& loop, std::string preferencesPath)
      : loop_(loop), preferences_(std::move(preferencesPath)) {}
  double elapsed() const override;
  void settle() override;
  void advance(double seconds) override;
  nlohmann::json paths() const override;
  std::vector<std::string> sdkCalls() const override { return sim_ ? sim_->sdkCalls() : std::vector<std::string>{}; }
  std::optional<std::string> screenshot(const std::string& path) override;

 private:
  ManualRunLoop& loop_;
  sim::SimPlatform* sim_ = nullptr;
  std::string preferences_;
};

}  // namespace nimbrel
