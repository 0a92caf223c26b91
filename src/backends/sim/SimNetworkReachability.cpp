#include "backends/sim/SimNetworkReachability.h"

namespace nimbrel::sim {

std::optional<unsigned> SimNetworkReachability::flags() const {
  if (!network_) return std::nullopt;
  unsigned f = 0;
  if (network_->reachable) f |= reachable;
  if (network_->connectionRequired) f |= connectionRequired;
  return f;
}

}  // namespace nimbrel::sim
