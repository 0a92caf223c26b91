#include "platform/services/NetworkReachability.h"

#include <gtest/gtest.h>

#include "platform/PlatformState.h"

namespace {

class FixedReachability : public NetworkReachability {
 public:
  explicit FixedReachability(std::optional<unsigned> flags) : flags_(flags) {}
  std::optional<unsigned> flags() const override { return flags_; }

 private:
  std::optional<unsigned> flags_;
};

TEST(NetworkReachabilityTest, WithNothingInstalledTheNetworkIsReachableAndAResetForgetsAnInstalledSource) {
  EXPECT_EQ(NetworkReachability::current()->flags(), std::optional<unsigned>(2u));

  NetworkReachability::install(std::make_shared<FixedReachability>(std::nullopt));
  EXPECT_EQ(NetworkReachability::current()->flags(), std::nullopt);

  resetPlatformState();
  EXPECT_EQ(NetworkReachability::current()->flags(), std::optional<unsigned>(2u));
}

}  // namespace
