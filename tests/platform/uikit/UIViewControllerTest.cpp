#include "platform/uikit/UIViewController.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "platform/foundation/NSLog.h"
#include "platform/uikit/UINavigationController.h"
#include "LifeCycleJournal.h"

namespace {

using uikit_test::Lines;
using uikit_test::recording;
using Style = UIModalPresentationStyle;

// --- Loading the view ---------------------------------------------------------------------------

class SelfInspectingController : public UIViewController {
 public:
  int loadViewCalls = 0;
  std::vector<std::string> order;
  std::shared_ptr<UIView> seenInViewDidLoad;

 protected:
  void loadView() override {
    ++loadViewCalls;
    UIViewController::loadView();
  }
  void viewDidLoad() override {
    order.push_back("viewDidLoad");
    seenInViewDidLoad = view();  // asking again must not load again
  }
};

TEST(UIViewControllerViewTest, TheViewLoadsOnceAndTheSceneLoaderRunsBeforeViewDidLoadWithTheViewInPlace) {
  auto vc = std::make_shared<SelfInspectingController>();
  vc->setSceneLoader([&](UIViewController& c) {
    vc->order.push_back(c.isViewLoaded() ? "scene with view" : "scene without view");
    auto label = std::make_shared<UIView>();
    c.view()->addSubview(label);
    c.registerOutlet("label", label);
  });
  EXPECT_FALSE(vc->isViewLoaded());

  auto first = vc->view();
  auto second = vc->view();
  vc->loadViewIfNeeded();

  EXPECT_EQ(vc->loadViewCalls, 1);
  EXPECT_EQ(vc->order, (std::vector<std::string>{"scene with view", "viewDidLoad"}));
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(first, second);
  EXPECT_EQ(vc->seenInViewDidLoad, first);
  ASSERT_EQ(first->subviews().size(), 1u);
  EXPECT_EQ(vc->outlet("label"), first->subviews()[0]);

  // Actions are found by their whole selector, the colon included.
  int calls = 0;
  vc->registerAction("onBack:", [&](const std::shared_ptr<NSObject>&) { ++calls; });
  EXPECT_FALSE(vc->respondsToSelector("onBack"));
  EXPECT_TRUE(vc->performAction("onBack:", nullptr) && !vc->performAction("onBack", nullptr));
  EXPECT_EQ(calls, 1);
}

// --- Modal presentation ---------------------------------------------------------------------------

// Sorted but for the last `tail` lines: the order between two screens' calls is not promised.
Lines sorted(Lines lines, size_t tail = 0) {
  std::sort(lines.begin(), lines.end() - static_cast<long>(std::min(tail, lines.size())));
  return lines;
}

class PresentationTest : public uikit_test::ScreenTest {
 public:
  std::vector<std::string> logLines;

  void SetUp() override {
    LogSink::install([this](std::string_view line) { logLines.emplace_back(line); });
  }
  void TearDown() override { LogSink::install(nullptr); }

  std::function<void()> noteCompletion(std::string what) {
    return [this, what] { journal.note(what); };
  }
};

TEST_F(PresentationTest, PresentAndDismissMoveThePresenterOnlyForCoveringStyles) {
  for (Style style : {Style::fullScreen, Style::currentContext, Style::overFullScreen,
                      Style::overCurrentContext, Style::pageSheet, Style::formSheet, Style::custom,
                      Style::automatic}) {
    SCOPED_TRACE(static_cast<int>(style));
    const bool covers = style == Style::fullScreen || style == Style::currentContext;
    auto a = recording("A", journal);
    showOnScreen(a);
    auto b = recording("B", journal);
    b->setModalPresentationStyle(style);

    a->presentViewController(b, true, noteCompletion("presented"));

    // The will-callbacks run inside the call, the did-callbacks one turn later, then completion
    EXPECT_EQ(journal.take(), covers ? (Lines{"B.viewDidLoad", "A.viewWillDisappear", "B.viewWillAppear"})
                                     : (Lines{"B.viewDidLoad", "B.viewWillAppear"}));
    EXPECT_EQ(sorted(settle(), 2),
              covers ? (Lines{"A.viewDidDisappear", "B.viewDidAppear", "presented", "next turn"})
                     : (Lines{"B.viewDidAppear", "presented", "next turn"}));
    EXPECT_EQ(a->presentedViewController(), b);
    EXPECT_EQ(b->presentingViewController(), a);

    a->dismissViewControllerAnimated(true, noteCompletion("dismissed"));

    // The presenter comes back only if it had left
    EXPECT_EQ(sorted(journal.take()), covers ? (Lines{"A.viewWillAppear", "B.viewWillDisappear"})
                                             : (Lines{"B.viewWillDisappear"}));
    EXPECT_EQ(sorted(settle(), 2),
              covers ? (Lines{"A.viewDidAppear", "B.viewDidDisappear", "dismissed", "next turn"})
                     : (Lines{"B.viewDidDisappear", "dismissed", "next turn"}));
    EXPECT_EQ(a->presentedViewController(), nullptr);
    EXPECT_EQ(b->presentingViewController(), nullptr);
    EXPECT_EQ(a->appearance(), UIViewController::Appearance::appeared);
  }
}

TEST_F(PresentationTest, AScreenInsideANavigationControllerPresentsThroughIt) {
  auto a = recording("A", journal);
  auto nav = UINavigationController::withRoot(a);
  showOnScreen(nav);
  auto b = recording("B", journal);
  b->setModalPresentationStyle(Style::fullScreen);

  a->presentViewController(b, false, nullptr);

  EXPECT_EQ(nav->presentedViewController(), b);
  EXPECT_EQ(a->presentedViewController(), nullptr);
  EXPECT_EQ(b->presentingViewController(), nav);
  EXPECT_EQ(journal.take(), (Lines{"B.viewDidLoad", "A.viewWillDisappear", "B.viewWillAppear"}));
  settle();

  // The child asking for the dismissal reaches the same presentation
  a->dismissViewControllerAnimated(false, nullptr);
  EXPECT_EQ(nav->presentedViewController(), nullptr);
  settle();
  EXPECT_EQ(a->appearance(), UIViewController::Appearance::appeared);
}

TEST_F(PresentationTest, DismissWorksFromEitherEndAndReleasesThePresentedScreenOnceItEnded) {
  for (Style style : {Style::fullScreen, Style::automatic}) {
    for (bool fromPresented : {false, true}) {
      SCOPED_TRACE(fromPresented ? "dismiss called on the presented" : "dismiss called on the presenter");
      SCOPED_TRACE(static_cast<int>(style));
      auto a = recording("A", journal);
      showOnScreen(a);
      std::weak_ptr<UIViewController> weakB;
      {
        auto b = recording("B", journal);
        weakB = b;
        b->setModalPresentationStyle(style);
        a->presentViewController(b, false, nullptr);
        settle();
        (fromPresented ? b : a)->dismissViewControllerAnimated(true, noteCompletion("done"));
      }

      EXPECT_FALSE(weakB.expired()) << "the presented screen lives through its dismissal";
      Lines covered{"A.viewDidAppear", "A.viewWillAppear", "B.viewDidDisappear",
                    "B.viewWillDisappear", "done", "next turn"};
      EXPECT_EQ(sorted(settle(), 2), style == Style::fullScreen
                                         ? covered
                                         : (Lines{"B.viewDidDisappear", "B.viewWillDisappear", "done", "next turn"}));
      EXPECT_TRUE(weakB.expired());
      EXPECT_EQ(a->presentedViewController(), nullptr);
      EXPECT_EQ(a->appearance(), UIViewController::Appearance::appeared);
    }
  }
}

// A over B over C; dismissing from A removes B and C, dismissing from B only C.
TEST_F(PresentationTest, DismissingWithinAChainRemovesEveryScreenAboveTheDismisser) {
  struct Row {
    Style middle, top;
    bool fromMiddle;
    Lines willCalls;  // sorted
    Lines didCalls;   // sorted
  };
  const Row rows[] = {
      // B was off screen under C already: only C leaves
      {Style::fullScreen, Style::fullScreen, false,
       {"A.viewWillAppear", "C.viewWillDisappear"},
       {"A.viewDidAppear", "C.viewDidDisappear"}},
      // B stayed visible under C: both leave
      {Style::fullScreen, Style::overFullScreen, false,
       {"A.viewWillAppear", "B.viewWillDisappear", "C.viewWillDisappear"},
       {"A.viewDidAppear", "B.viewDidDisappear", "C.viewDidDisappear"}},
      {Style::pageSheet, Style::pageSheet, false,
       {"B.viewWillDisappear", "C.viewWillDisappear"},
       {"B.viewDidDisappear", "C.viewDidDisappear"}},
      {Style::fullScreen, Style::fullScreen, true,
       {"B.viewWillAppear", "C.viewWillDisappear"},
       {"B.viewDidAppear", "C.viewDidDisappear"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(static_cast<int>(row.middle) * 100 + static_cast<int>(row.top) * 10 + row.fromMiddle);
    auto a = recording("A", journal);
    showOnScreen(a);
    auto b = recording("B", journal);
    auto c = recording("C", journal);
    b->setModalPresentationStyle(row.middle);
    c->setModalPresentationStyle(row.top);
    a->presentViewController(b, false, nullptr);
    settle();
    b->presentViewController(c, false, nullptr);
    settle();
    EXPECT_EQ(b->presentedViewController(), c);

    (row.fromMiddle ? b : a)->dismissViewControllerAnimated(true, noteCompletion("done"));

    EXPECT_EQ(sorted(journal.take()), row.willCalls);
    Lines did = row.didCalls;
    did.insert(did.end(), {"done", "next turn"});
    EXPECT_EQ(sorted(settle(), 2), did);
    EXPECT_EQ(a->presentedViewController(), row.fromMiddle ? b : nullptr);
    EXPECT_EQ(b->presentedViewController(), nullptr);
    EXPECT_EQ(c->presentingViewController(), nullptr);
    EXPECT_EQ(b->appearance(), row.fromMiddle ? UIViewController::Appearance::appeared
                                              : UIViewController::Appearance::disappeared);
    EXPECT_EQ(c->appearance(), UIViewController::Appearance::disappeared);
  }
}

// One stack on screen, and a presentation refused from each kind of presenter in turn.
TEST_F(PresentationTest, RefusedPresentationsLogAndNeverComplete) {
  auto a = recording("A", journal), b = recording("B", journal), c = recording("C", journal);
  auto nav = UINavigationController::withRoot(a);
  showOnScreen(nav);
  auto refused = [&](const std::shared_ptr<UIViewController>& presenter,
                     const std::shared_ptr<UIViewController>& presented, const char* logged) {
    auto before = presenter->rootAncestor()->presentedViewController();
    auto presentingBefore = presented->presentingViewController();
    logLines.clear();
    journal.take();

    presenter->presentViewController(presented, true, noteCompletion("completed"));

    EXPECT_EQ(settle(), (Lines{"next turn"}));
    ASSERT_EQ(logLines.size(), 1u);
    EXPECT_NE(logLines[0].find(logged), std::string::npos) << logLines[0];
    EXPECT_EQ(presenter->rootAncestor()->presentedViewController(), before);
    EXPECT_EQ(presented->presentingViewController(), presentingBefore);
    EXPECT_TRUE(presentingBefore || !presented->isViewLoaded());
  };
  const char* notInHierarchy = "whose view is not in the window hierarchy";

  refused(recording("E", journal), recording("X", journal), notInHierarchy);  // never shown
  nav->pushViewController(b, false);
  settle();
  refused(a, recording("X", journal), notInHierarchy);  // covered by a pushed screen
  nav->popViewControllerAnimated(false);
  settle();
  refused(b, recording("X", journal), notInHierarchy);  // popped
  c->setModalPresentationStyle(Style::pageSheet);
  a->presentViewController(c, false, nullptr);
  settle();
  refused(a, recording("X", journal), "which is already presenting");
  // C is on screen, presented by the stack; presenting it again from its own chain makes no cycle.
  auto d = recording("D", journal);
  c->presentViewController(d, false, nullptr);
  settle();
  refused(d, c, "");
  EXPECT_EQ(c->presentingViewController(), nav);
  EXPECT_EQ(d->presentedViewController(), nullptr);
}

}  // namespace
