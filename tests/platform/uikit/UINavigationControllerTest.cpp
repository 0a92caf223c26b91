#include "platform/uikit/UINavigationController.h"

#include <gtest/gtest.h>

#include "LifeCycleJournal.h"

namespace {

using uikit_test::Lines;
using uikit_test::recording;

class UINavigationControllerTest : public uikit_test::ScreenTest {
 protected:
  std::shared_ptr<UINavigationController> nav;

  void showInStack(const std::shared_ptr<UIViewController>& root) {
    nav = UINavigationController::withRoot(root);
    showOnScreen(nav);
  }
};

TEST_F(UINavigationControllerTest, PushAndPopMoveAppearanceOneTurnApartAndReleaseThePoppedScreenAfterwards) {
  auto a = recording("A", journal);
  showInStack(a);
  std::weak_ptr<UIViewController> weakB;
  {
    auto b = recording("B", journal);
    weakB = b;
    nav->pushViewController(b, true);
  }

  EXPECT_EQ(journal.take(), (Lines{"B.viewDidLoad", "A.viewWillDisappear", "B.viewWillAppear"}));
  EXPECT_EQ(settle(), (Lines{"A.viewDidDisappear", "B.viewDidAppear", "next turn"}));
  EXPECT_EQ(nav->topViewController(), weakB.lock());
  EXPECT_EQ(weakB.lock()->navigationController(), nav);
  EXPECT_EQ(a->appearance(), UIViewController::Appearance::disappeared);
  EXPECT_EQ(weakB.lock()->appearance(), UIViewController::Appearance::appeared);

  nav->popViewControllerAnimated(true);

  EXPECT_EQ(journal.take(), (Lines{"B.viewWillDisappear", "A.viewWillAppear"}));
  ASSERT_FALSE(weakB.expired()) << "the popped screen must live through its transition";
  EXPECT_EQ(weakB.lock()->navigationController(), nav) << "it still has its stack while it disappears";
  EXPECT_EQ(settle(), (Lines{"B.viewDidDisappear", "A.viewDidAppear", "next turn"}));
  EXPECT_TRUE(weakB.expired()) << "nobody holds the popped screen once its transition ended";
  EXPECT_EQ(nav->viewControllers().size(), 1u);
}

TEST_F(UINavigationControllerTest, PopToRootMovesAppearanceFromTheTopOnlyAndReleasesEveryPoppedScreen) {
  auto a = recording("A", journal);
  showInStack(a);
  std::weak_ptr<UIViewController> weakB, weakC;
  {
    auto b = recording("B", journal);
    auto c = recording("C", journal);
    weakB = b;
    weakC = c;
    nav->pushViewController(b, false);
    loop.runUntilIdle();
    nav->pushViewController(c, false);
    loop.runUntilIdle();
  }
  journal.take();

  auto popped = nav->popToRootViewControllerAnimated(true);

  ASSERT_EQ(popped.size(), 2u);
  EXPECT_EQ(popped[0], weakB.lock());
  EXPECT_EQ(popped[1], weakC.lock());
  popped.clear();
  EXPECT_EQ(journal.take(), (Lines{"C.viewWillDisappear", "A.viewWillAppear"}));
  EXPECT_EQ(settle(), (Lines{"C.viewDidDisappear", "A.viewDidAppear", "next turn"}));
  EXPECT_TRUE(weakB.expired());
  EXPECT_TRUE(weakC.expired());
  EXPECT_EQ(nav->viewControllers(), (std::vector<std::shared_ptr<UIViewController>>{a}));
}

TEST_F(UINavigationControllerTest, SetViewControllersMovesAppearanceBetweenTheOldAndNewTop) {
  auto a = recording("A", journal);
  showInStack(a);
  std::weak_ptr<UIViewController> weakB;
  {
    auto b = recording("B", journal);
    weakB = b;
    nav->pushViewController(b, false);
    loop.runUntilIdle();
  }
  journal.take();
  auto d = recording("D", journal);

  nav->setViewControllers({a, d}, true);

  EXPECT_EQ(journal.take(), (Lines{"D.viewDidLoad", "B.viewWillDisappear", "D.viewWillAppear"}));
  EXPECT_EQ(settle(), (Lines{"B.viewDidDisappear", "D.viewDidAppear", "next turn"}));
  EXPECT_TRUE(weakB.expired());
  EXPECT_EQ(a->navigationController(), nav);
  EXPECT_EQ(d->navigationController(), nav);
}

TEST_F(UINavigationControllerTest, OperationsThatKeepTheTopMakeNoAppearanceCalls) {
  auto a = recording("A", journal);
  showInStack(a);
  EXPECT_EQ(nav->popViewControllerAnimated(true), nullptr);
  EXPECT_TRUE(nav->popToRootViewControllerAnimated(true).empty());
  auto z = recording("Z", journal);
  nav->setViewControllers({z, a}, false);
  EXPECT_EQ(settle(), (Lines{"next turn"}));
  EXPECT_EQ(z->navigationController(), nav);
  EXPECT_FALSE(z->isViewLoaded()) << "a screen under the top is not loaded before it is needed";

  auto b = recording("B", journal);
  nav->pushViewController(b, false);
  loop.runUntilIdle();
  journal.take();
  for (const auto& again : {std::shared_ptr<UIViewController>(a), std::shared_ptr<UIViewController>(b)}) {
    nav->pushViewController(again, true);
  }
  EXPECT_EQ(settle(), (Lines{"next turn"}));
  EXPECT_EQ(nav->viewControllers().size(), 3u);
  EXPECT_EQ(nav->topViewController(), b);
}

TEST_F(UINavigationControllerTest, AStackThatIsNotOnScreenMakesNoAppearanceCalls) {
  auto a = recording("A", journal);
  auto b = recording("B", journal);
  auto c = recording("C", journal);
  nav = UINavigationController::withRoot(a);

  nav->pushViewController(b, true);
  nav->pushViewController(c, true);
  nav->popViewControllerAnimated(true);

  EXPECT_EQ(settle(), (Lines{"next turn"}));
  EXPECT_EQ(nav->topViewController(), b);

  // When the stack is later shown, only its top appears.
  window = std::make_shared<UIWindow>(CGRectMake(0, 0, 390, 844));
  window->setRootViewController(nav);
  window->makeKeyAndVisible();
  EXPECT_EQ(journal.take(), (Lines{"B.viewDidLoad", "B.viewWillAppear"}));
  EXPECT_EQ(settle(), (Lines{"B.viewDidAppear", "next turn"}));
  EXPECT_FALSE(a->isViewLoaded());
}

TEST_F(UINavigationControllerTest, VisibleControllerIsWhatTheStackPresents) {
  auto a = recording("A", journal);
  showInStack(a);
  auto modal = recording("M", journal);
  EXPECT_EQ(nav->visibleViewController(), a);
  a->presentViewController(modal, false, nullptr);
  EXPECT_EQ(nav->visibleViewController(), modal);
}

}  // namespace
