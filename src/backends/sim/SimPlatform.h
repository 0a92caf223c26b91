#pragma once

#include <memory>
#include <string>
#include <vector>

#include "backends/sim/Fixture.h"
#include "backends/sim/SimCallLog.h"
#include "backends/sim/SimFileDates.h"
#include "platform/foundation/ManualRunLoop.h"
#include "platform/foundation/PreferencesStore.h"

namespace nimbrel::sim {

// The simulated platform of one run: virtual time from the fixture's moment, a temporary app home
// with the fixture's documents, preferences in memory, and the fixture's answers for permissions,
// ads and the device. Installing it resets the process's platform state; destroying it removes
// the temporary home.
class SimPlatform {
 public:
  // Which run loop the run uses: its own virtual-time loop, or the one already installed (a
  // front end with a real event loop).
  enum class RunLoopChoice { own, installed };
  explicit SimPlatform(Fixture fixture, RunLoopChoice choice = RunLoopChoice::own);
  ~SimPlatform();
  SimPlatform(const SimPlatform&) = delete;
  SimPlatform& operator=(const SimPlatform&) = delete;

  // The platform's own loop; the process ends when it runs on the installed one.
  ManualRunLoop& runLoop();
  const Fixture& fixture() const { return fixture_; }
  const std::string& home() const { return home_; }
  double startTime() const { return fixture_.now; }
  std::vector<std::string> sdkCalls() const { return calls_->calls(); }
  InMemoryPreferencesStore& preferencesStore() { return *preferences_; }

 private:
  void makeHome();
  void placeDocuments();
  // Beside the app home, not in it: where picked files are handed over.
  std::string pickerFolder() const { return home_ + "-picker"; }

  std::unique_ptr<ManualRunLoop> loop_;
  Fixture fixture_;
  std::string home_;
  std::shared_ptr<SimCallLog> calls_ = std::make_shared<SimCallLog>();
  std::shared_ptr<InMemoryPreferencesStore> preferences_;
  std::shared_ptr<SimFileDates> fileDates_ = std::make_shared<SimFileDates>();
};

}  // namespace nimbrel::sim
