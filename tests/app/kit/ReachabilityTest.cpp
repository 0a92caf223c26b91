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
  struct Row {
    std::optional<unsigned> flags;
    bool connected;
  };
  const Row rows[] = {
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
  for (const auto& row : rows) {
    NetworkReachability::install(std::make_shared<FixedFlags>(row.flags));
    EXPECT_EQ(Reachability::isConnected(), row.connected)
        << (row.flags ? std::to_string(*row.flags) : std::string("no flags"));
  }
}

TEST_F(ReachabilityTest, TheFixturesNetworkDecides) {
  struct Row {
    const char* fixture;
    bool connected;
  };
  const Row rows[] = {
      {"{}", true},
      {R"({"network": {}})", true},
      {R"({"network": {"reachable": false}})", false},
      {R"({"network": {"reachable": true, "connectionRequired": true}})", false},
      {R"({"network": {"connectionRequired": true}})", false},
      {R"({"network": null})", false},
  };
  for (const auto& row : rows) {
    platform.reset();  // its end resets the process, which would undo the next one's setup
    start(row.fixture);
    EXPECT_EQ(Reachability::isConnected(), row.connected) << row.fixture;
  }
}

TEST_F(ReachabilityTest, TheAlertAsksForAConnectionOnTheRootScreen) {
  // Given a launched application
  auto root = launchWithRoot();

  // When
  Reachability::showNoConnectionAlert();
  settle();

  // Then
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
}

TEST_F(ReachabilityTest, NoRootScreenShowsNothingAndNoKeyWindowEndsTheProcess) {
  auto root = launchWithRoot();
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
