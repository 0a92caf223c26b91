#pragma once

#include <optional>

#include "backends/sim/Fixture.h"
#include "platform/services/NetworkReachability.h"

namespace nimbrel::sim {

// Reports the fixture's network as the platform's flags.
class SimNetworkReachability : public NetworkReachability {
 public:
  explicit SimNetworkReachability(std::optional<Fixture::Network> network) : network_(network) {}
  std::optional<unsigned> flags() const override;

 private:
  std::optional<Fixture::Network> network_;
};

}  // namespace nimbrel::sim
