#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/ads/MAAd.h"

// What answers the AppLovin SDK's requests: the simulated network of a fixture, or the desktop's
// local demo network. Answers arrive later, on the main queue.
class AppLovinNetwork {
 public:
  virtual ~AppLovinNetwork() = default;
  virtual void initialize(std::function<void()> done) = 0;
  // The ad, or no value when there is no fill.
  virtual void requestAd(MAAdFormat format, const std::string& adUnit,
                         std::function<void(std::optional<MAAd>)> answer) = 0;
  // Whether the SDK already holds an ad of this format before any load.
  virtual bool hasPreloadedAd(MAAdFormat format) const { return false; }
  // Every call the program made into the SDK, for scripts to check.
  virtual void record(const std::string& call) {}

  static std::shared_ptr<AppLovinNetwork> current();
  static void install(std::shared_ptr<AppLovinNetwork> network);
};
