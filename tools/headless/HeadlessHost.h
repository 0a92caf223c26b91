#pragma once

#include "automation/AutomationHost.h"
#include "backends/sim/SimPlatform.h"

namespace nimbrel {

// The automation host over the simulated platform: virtual time, no window.
class HeadlessHost : public AutomationHost {
 public:
  explicit HeadlessHost(sim::SimPlatform& platform) : platform_(platform) {}
  double elapsed() const override;
  void settle() override;
  void advance(double seconds) override;
  nlohmann::json paths() const override;
  std::vector<std::string> sdkCalls() const override { return platform_.sdkCalls(); }
  std::optional<std::string> screenshot(const std::string& path) override;

 private:
  sim::SimPlatform& platform_;
};

}  // namespace nimbrel
