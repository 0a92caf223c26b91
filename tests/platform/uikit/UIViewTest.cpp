#include "platform/uikit/UIView.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/uikit/UILabel.h"
#include "platform/uikit/UIScrollView.h"

namespace {

std::shared_ptr<UIView> tagged(long tag) {
  auto v = std::make_shared<UIView>();
  v->setTag(tag);
  return v;
}

// Counts `changed` emissions of a view for as long as it lives.
struct ChangeCounter {
  explicit ChangeCounter(const std::shared_ptr<UIView>& view) : view(view) {
    token = view->changed().observe([this] { ++count; });
  }
  ~ChangeCounter() {
    if (auto v = view.lock()) v->changed().unobserve(token);
  }
  std::weak_ptr<UIView> view;
  ChangeSignal::Token token = 0;
  int count = 0;
};

TEST(UIViewTest, AViewMovesFromItsOldParentOrToTheFrontAndRemovingItLetsItGo) {
  auto oldParent = std::make_shared<UIView>();
  auto newParent = std::make_shared<UIView>();
  std::weak_ptr<UIView> child;
  {
    auto made = std::make_shared<UIView>();
    child = made;
    oldParent->addSubview(made);
  }
  ChangeCounter oldChanges(oldParent), newChanges(newParent);

  newParent->addSubview(child.lock());

  EXPECT_TRUE(oldParent->subviews().empty());
  EXPECT_EQ(newParent->subviews(), (std::vector<std::shared_ptr<UIView>>{child.lock()}));
  EXPECT_EQ(child.lock()->superview(), newParent);
  EXPECT_EQ(oldChanges.count, 1);
  EXPECT_EQ(newChanges.count, 1);

  child.lock()->removeFromSuperview();

  EXPECT_TRUE(child.expired());
  EXPECT_TRUE(newParent->subviews().empty());
  EXPECT_EQ(newChanges.count, 2);

  // Adding a subview again moves it to the front.
  auto a = tagged(1), b = tagged(2), c = tagged(3);
  for (const auto& v : {a, b, c}) newParent->addSubview(v);
  newParent->addSubview(a);
  newParent->insertSubviewAtIndex(c, 0);
  EXPECT_EQ(newParent->subviews(), (std::vector<std::shared_ptr<UIView>>{c, b, a}));
}

TEST(UIViewTest, AViewIsNeverAddedInsideItself) {
  auto root = std::make_shared<UIView>();
  auto child = std::make_shared<UIView>();
  auto grandchild = std::make_shared<UIView>();
  root->addSubview(child);
  child->addSubview(grandchild);

  root->addSubview(root);
  grandchild->addSubview(root);
  grandchild->addSubview(child);

  EXPECT_EQ(root->superview(), nullptr);
  EXPECT_EQ(child->superview(), root);
  EXPECT_EQ(grandchild->superview(), child);
  EXPECT_TRUE(grandchild->subviews().empty());
  EXPECT_FALSE(root->isEffectivelyHidden());
}

TEST(UIViewTest, ViewWithTagSearchesDepthFirstFromItself) {
  // root(7) ─┬─ a(1) ── a1(5)
  //          └─ b(5) ── b1(6)
  auto root = tagged(7), a = tagged(1), a1 = tagged(5), b = tagged(5), b1 = tagged(6);
  root->addSubview(a);
  a->addSubview(a1);
  root->addSubview(b);
  b->addSubview(b1);

  struct Row {
    long tag;
    std::shared_ptr<UIView> expected;
  };
  for (const Row& row : {Row{7, root}, Row{1, a}, Row{5, a1}, Row{6, b1}, Row{42, nullptr}}) {
    EXPECT_EQ(root->viewWithTag(row.tag), row.expected) << row.tag;
  }
  EXPECT_EQ(b->viewWithTag(5), b);
  EXPECT_EQ(a->viewWithTag(6), nullptr) << "a sibling's subtree is not searched";
}

TEST(UIViewTest, HiddenAncestorsHideDescendants) {
  auto root = std::make_shared<UIView>();
  auto middle = std::make_shared<UIView>();
  auto leaf = std::make_shared<UIView>();
  root->addSubview(middle);
  middle->addSubview(leaf);

  struct Row {
    bool rootHidden, middleHidden, leafHidden, leafEffectivelyHidden;
  };
  for (const Row& row : {Row{false, false, false, false}, Row{true, false, false, true},
                         Row{false, true, false, true}, Row{false, false, true, true}}) {
    root->setHidden(row.rootHidden);
    middle->setHidden(row.middleHidden);
    leaf->setHidden(row.leafHidden);
    EXPECT_EQ(leaf->isEffectivelyHidden(), row.leafEffectivelyHidden)
        << row.rootHidden << row.middleHidden << row.leafHidden;
    EXPECT_EQ(leaf->isHidden(), row.leafHidden);
  }
}

TEST(UIViewTest, VisibleChangesAreSignalledAndInvisibleOnesAreNot) {
  struct Row {
    const char* name;
    std::function<void(UIView&)> change;
    int signals;
  };
  const Row rows[] = {
      {"frame", [](UIView& v) { v.setFrame(CGRectMake(1, 2, 3, 4)); }, 1},
      {"same frame", [](UIView& v) { v.setFrame(v.frame()); }, 0},
      {"hidden", [](UIView& v) { v.setHidden(true); }, 1},
      {"same hidden", [](UIView& v) { v.setHidden(false); }, 0},
      {"alpha", [](UIView& v) { v.setAlpha(0.5); }, 1},
      {"same alpha", [](UIView& v) { v.setAlpha(1); }, 0},
      {"background", [](UIView& v) { v.setBackgroundColor(UIColor::whiteColor()); }, 1},
      {"clips", [](UIView& v) { v.setClipsToBounds(true); }, 1},
      {"layer", [](UIView& v) { v.updateLayer([](CALayer& l) { l.cornerRadius = 8; }); }, 1},
      {"layout pass", [](UIView& v) { v.layoutIfNeeded(); }, 1},
      {"subview", [](UIView& v) { v.addSubview(std::make_shared<UIView>()); }, 1},
      {"tag", [](UIView& v) { v.setTag(9); }, 0},
      {"interaction", [](UIView& v) { v.setUserInteractionEnabled(false); }, 0},
      {"label text", [](UIView& v) { static_cast<UILabel&>(v).setText("Hello"); }, 1},
      {"same label text", [](UIView& v) { static_cast<UILabel&>(v).setText(std::nullopt); }, 0},
  };
  for (const auto& row : rows) {
    auto view = std::make_shared<UILabel>();
    ChangeCounter changes(view);
    row.change(*view);
    EXPECT_EQ(changes.count, row.signals) << row.name;
  }
}

// Observers change while the view tells them: one leaves, one is added, and one ends another
// one's observation (as a screen's shell does when it is destroyed).
TEST(UIViewTest, ObserversMayComeAndGoWhileTheViewTellsThem) {
  auto view = std::make_shared<UIView>();
  std::vector<std::string> heard;
  ChangeSignal::Token self = 0, dropped = 0;
  self = view->changed().observe([&] {
    heard.push_back("once");
    view->changed().unobserve(self);
    view->changed().unobserve(dropped);
    view->changed().observe([&] { heard.push_back("added"); });
  });
  dropped = view->changed().observe([&] { heard.push_back("dropped"); });
  view->changed().observe([&] { heard.push_back("always"); });

  view->setAlpha(0.5);
  view->setAlpha(0.25);

  EXPECT_EQ(heard, (std::vector<std::string>{"once", "always", "always", "added"}));
}

}  // namespace

namespace {

TEST(UIViewConvertTest, RectsMoveByTheOriginsBetweenTheViewsAndScrolledContent) {
  // Given window (10, 20) > screen view (5, 7) > scroll view (0, 100) scrolled by 30 > cell at
  // (0, 200) of the content > button at (300, 8)
  auto window = std::make_shared<UIView>(CGRectMake(10, 20, 390, 844));
  auto screen = std::make_shared<UIView>(CGRectMake(5, 7, 380, 800));
  auto scroll = std::make_shared<UIScrollView>(CGRectMake(0, 100, 380, 600));
  auto cell = std::make_shared<UIView>(CGRectMake(0, 200, 380, 60));
  auto button = std::make_shared<UIView>(CGRectMake(300, 8, 44, 44));
  window->addSubview(screen);
  screen->addSubview(scroll);
  scroll->addSubview(cell);
  cell->addSubview(button);
  scroll->setContentOffset({0, 30});

  EXPECT_EQ(button->convertRectToView(button->bounds(), screen.get()), CGRectMake(300, 278, 44, 44));
  EXPECT_EQ(button->convertRectToView(button->bounds(), nullptr), CGRectMake(305, 285, 44, 44))
      << "no target: the topmost view's own coordinates";
  EXPECT_EQ(button->convertRectToView(CGRectMake(1, 2, 3, 4), button.get()), CGRectMake(1, 2, 3, 4));
  EXPECT_EQ(screen->convertRectToView(CGRectMake(300, 278, 44, 44), button.get()), CGRectMake(0, 0, 44, 44));
  EXPECT_EQ(scroll->convertRectToView(scroll->bounds(), screen.get()), CGRectMake(0, 100, 380, 600))
      << "a scroll view's own frame does not move with its content";

  // Views in separate trees meet in the space their topmost frames are given in.
  auto other = std::make_shared<UIView>(CGRectMake(50, 60, 100, 100));
  EXPECT_EQ(button->convertRectToView(button->bounds(), other.get()), CGRectMake(265, 245, 44, 44));
}

}  // namespace
