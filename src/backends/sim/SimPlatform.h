#pragma once

#include <memory>
#include <string>
#include <vector>

#include "backends/sim/Fixture.h"
#include "backends/sim/SimCallLog.h"
#include "platform/foundation/ManualRunLoop.h"
#include "platform/foundation/PreferencesStore.h"

namespace nimbrel::sim {

// The simulated platform of one run: virtual time from the fixture's moment, a temporary app home
// with the fixture's documents, preferences in memory, and the fixture's answers for permissions,
// ads and the device. Installing it resets the process's platform state; destroying it removes
// the temporary home.
class SimPlatform {
 public:
  explicit SimPlatform(Fixture fixture);
  ~SimPlatform();
  SimPlatform(const SimPlatform&) = delete;
  SimPlatform& operator=(const SimPlatform&) = delete;

  ManualRunLoop& runLoop() { return loop_; }
  const Fixture& fixture() const { return fixture_; }
  const std::string& home() const { return home_; }
  double startTime() const { return fixture_.now; }
  std::vector<std::string> sdkCalls() const { return calls_->calls(); }
  InMemoryPreferencesStore& preferencesStore() { return *preferences_; }

 private:
  void makeHome();
  void placeDocuments();

  ManualRunLoop loop_;
  Fixture fixture_;
  std::string home_;
  std::shared_ptr<SimCallLog> calls_ = std::make_shared<SimCallLog>();
  std::shared_ptr<InMemoryPreferencesStore> preferences_;
};

}  // namespace nimbrel::sim
