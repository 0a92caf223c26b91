#pragma once

#include <map>
#include <memory>
#include <mutex>

#include "backends/sim/Fixture.h"
#include "backends/sim/SimCallLog.h"
#include "platform/services/PermissionAuthority.h"

namespace nimbrel::sim {

// Answers prompts as the fixture says: an undetermined status takes the fixture's answer at the
// first request; later requests answer the status.
class SimPermissionAuthority : public PermissionAuthority {
 public:
  SimPermissionAuthority(const Fixture& fixture, std::shared_ptr<SimCallLog> log);
  int status(Kind kind) const override;
  void request(Kind kind, std::function<void(int)> answer) override;

 private:
  mutable std::mutex mutex_;
  std::map<Kind, Fixture::Permission> permissions_;
  std::shared_ptr<SimCallLog> log_;
};

}  // namespace nimbrel::sim
