#include "app/kit/Reachability.h"

#include <gtest/gtest.h>

#include "app/SimTest.h"
#include "platform/services/NetworkReachability.h"
#include "platform/uikit/UIAlertController.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIStoryboard.h"

namespace nimbrel {
namespace {

class FixedFlags : public NetworkReachability {
 public:
  explicit FixedFlags(std::optional<unsigned> flags) : flags_(flags) {}
  std::optional<unsigned> flags() const override { return flags_; }

 private:
  std::optional<unsigned> flags_;
};

class ReachabilityTest : public testing::SimTest {
 protected:
  std::shared_ptr<UIViewController> launchWithRoot() {
    start();
    auto root = std::make_shared<UIViewController>();
    UIStoryboard::setInitialScene("Main", [root] { return root; });
    UIApplication::sharedApplication().launch(nullptr, "Main");
    settle();
    return root;
  }
};

TEST_F(ReachabilityTest, OnlyAReachableNetworkThatNeedsNoConnectionCounts) {
  const std::pair<std::optional<unsigned>, bool> rows[] = {
      {std::nullopt, false},  // no reference or unreadable flags
      {0u, false},
      {2u, true},
      {2u | 4u, false},
      {4u, false},
      {1u, false},            // set, but not the reachable bit
      {2u | 1u | 8u, true},   // other bits do not matter
      {~4u, true},
      {~0u, false},
  };
  start();
  for (auto [flags, connected] : rows) {
    NetworkReachability::install(std::make_shared<FixedFlags>(flags));
    EXPECT_EQ(Reachability::isConnected(), connected) << (flags ? std::to_string(*flags) : std::string("no flags"));
  }
}

// How the fixture's network is read is FixtureTest's; here the simulated flags it gives.
TEST_F(ReachabilityTest, TheFixturesNetworkDecides) {
  const std::pair<const char*, bool> rows[] = {
      {"{}", true},
      {R"({"network": {"reachable": false}})", false},
      {R"({"network": {"connectionRequired": true}})", false},
      {R"({"network": null})", false},
  };
  for (auto [fixture, connected] : rows) {
    platform.reset();  // its end resets the process, which would undo the next one's setup
    start(fixture);
    EXPECT_EQ(Reachability::isConnected(), connected) << fixture;
  }
}

TEST_F(ReachabilityTest, TheAlertAsksForAConnectionOnTheRootScreenOnlyAndNeedsAKeyWindow) {
  auto root = launchWithRoot();
  Reachability::showNoConnectionAlert();
  settle();
  auto alert = as<UIAlertController>(root->presentedViewController());
  ASSERT_NE(alert, nullptr);
  EXPECT_EQ(alert->alertTitle(), "Alert!");
  EXPECT_EQ(alert->message(), "Please connet to internet");
  EXPECT_EQ(alert->preferredStyle(), UIAlertControllerStyle::alert);
  ASSERT_EQ(alert->actions().size(), 1u);
  EXPECT_EQ(alert->actions()[0].title, "OK");
  EXPECT_EQ(alert->actions()[0].style, UIAlertActionStyle::defaultStyle);
  EXPECT_FALSE(alert->actions()[0].handler);
  EXPECT_TRUE(alert->pressActionWithTitle("OK"));
  settle();
  EXPECT_EQ(root->presentedViewController(), nullptr);

  // No root screen shows nothing; no key window ends the process.
  UIApplication::sharedApplication().keyWindow()->setRootViewController(nullptr);
  settle();
  Reachability::showNoConnectionAlert();
  settle();
  EXPECT_EQ(root->presentedViewController(), nullptr);

  UIApplication::sharedApplication().reset();
  EXPECT_DEATH(Reachability::showNoConnectionAlert(), "found nil");
}

}  // namespace
}  // namespace nimbrel
