#pragma once

#include <memory>
#include <optional>

// The platform's reachability flags for the zero address (`SCNetworkReachabilityCreateWithAddress`
// then `SCNetworkReachabilityGetFlags`): the fixture's network in the simulator, a fixed answer
// elsewhere until a desktop backend installs a real check.
class NetworkReachability {
 public:
  enum Flags : unsigned { reachable = 1u << 1, connectionRequired = 1u << 2 };
  virtual ~NetworkReachability() = default;
  // No value when no reference could be made or its flags cannot be read.
  virtual std::optional<unsigned> flags() const = 0;

  // With nothing installed the network is reachable.
  static std::shared_ptr<NetworkReachability> current();
  static void install(std::shared_ptr<NetworkReachability> source);
};
