#include "platform/uikit/UIWindow.h"

#include <gtest/gtest.h>

#include "platform/uikit/UINavigationController.h"
#include "LifeCycleJournal.h"

namespace {

using uikit_test::Lines;
using uikit_test::recording;

class UIWindowTest : public uikit_test::ScreenTest {
 protected:
  void SetUp() override { window = std::make_shared<UIWindow>(CGRectMake(0, 0, 390, 844)); }
};

TEST_F(UIWindowTest, MakeKeyAndVisibleMakesTheRootAppearAndOnlyLiveWindowsAreListed) {
  auto root = recording("R", journal);
  window->setRootViewController(root);
  EXPECT_TRUE(journal.take().empty()) << "nothing loads before the window is shown";

  window->makeKeyAndVisible();

  EXPECT_TRUE(window->isKeyWindow());
  EXPECT_EQ(journal.take(), (Lines{"R.viewDidLoad", "R.viewWillAppear"}));
  EXPECT_EQ(settle(), (Lines{"R.viewDidAppear", "next turn"}));
  EXPECT_EQ(root->view()->frame(), window->bounds());
  {
    auto other = std::make_shared<UIWindow>(CGRectMake(0, 0, 10, 10));
    other->setRootViewController(recording("O", journal));
    EXPECT_EQ(UIWindow::allWindows().size(), 2u);
  }
  EXPECT_EQ(UIWindow::allWindows(), (std::vector<std::shared_ptr<UIWindow>>{window})) << "live windows only";
}

TEST_F(UIWindowTest, MakeKeyAndVisibleMakesTheTopOfANavigationRootAppearOnly) {
  auto a = recording("A", journal);
  auto b = recording("B", journal);
  auto nav = UINavigationController::withRoot(a);
  nav->pushViewController(b, false);
  window->setRootViewController(nav);

  window->makeKeyAndVisible();
  window->makeKeyAndVisible();

  EXPECT_EQ(journal.take(), (Lines{"B.viewDidLoad", "B.viewWillAppear"}));
  EXPECT_EQ(settle(), (Lines{"B.viewDidAppear", "next turn"}));
  EXPECT_EQ(nav->appearance(), UIViewController::Appearance::appeared);
  EXPECT_EQ(a->appearance(), UIViewController::Appearance::disappeared);
}

TEST_F(UIWindowTest, ReplacingTheRootOfAVisibleWindowSwapsAppearance) {
  auto first = recording("F", journal);
  window->setRootViewController(first);
  window->makeKeyAndVisible();
  settle();
  auto second = recording("S", journal);

  window->setRootViewController(second);

  EXPECT_EQ(journal.take(),
            (Lines{"F.viewWillDisappear", "F.viewDidDisappear", "S.viewDidLoad", "S.viewWillAppear"}));
  EXPECT_EQ(settle(), (Lines{"S.viewDidAppear", "next turn"}));
}

}  // namespace
