#include "app/VC/PopupMenu.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "app/SimTest.h"
#include "platform/PlatformState.h"
#include "platform/uikit/TextMeasurer.h"
#include "platform/uikit/UIButton.h"

namespace nimbrel {
namespace {

// Widths by text, so that character counts and widths can disagree.
class TableMeasurer : public TextMeasurer {
 public:
  explicit TableMeasurer(std::map<std::string, double> widths) : widths_(std::move(widths)) {}
  CGSize measure(std::string_view text, const UIFont& font) const override {
    fonts.push_back(font);
    auto it = widths_.find(std::string(text));
    return {it == widths_.end() ? -1 : it->second, 20};
  }
  mutable std::vector<UIFont> fonts;

 private:
  std::map<std::string, double> widths_;
};

class PopupMenuTest : public testing::SimTest {
 protected:
  std::shared_ptr<UIViewController> screen;
  std::shared_ptr<UIView> bar;
  std::shared_ptr<UIView> anchor;
  std::vector<long> pressed;

  void SetUp() override {
    start();
    screen = std::make_shared<UIViewController>();
    screen->view()->setFrame(CGRectMake(0, 0, 390, 844));
    // A 44-point button at the right end of a bar under the status bar: in the view it spans
    // x 340...384 and y 47...91, its middle at 69.
    bar = std::make_shared<UIView>(CGRectMake(0, 47, 390, 44));
    anchor = std::make_shared<UIButton>(CGRectMake(340, 0, 44, 44));
    bar->addSubview(anchor);
    screen->view()->addSubview(bar);
  }

  std::function<void(long)> recorder(long offset = 0) {
    return [this, offset](long index) { pressed.push_back(offset + index); };
  }
  void show(const std::vector<std::string>& entries, bool below = false, bool matchWidth = false) {
    showPopupMenu(*screen, anchor, entries, below, matchWidth, recorder());
  }
  std::shared_ptr<UIView> menu() {
    auto overlay = popupMenuOverlay();
    return overlay->subviews().size() == 2 ? overlay->subviews()[1] : nullptr;
  }
};

TEST_F(PopupMenuTest, TheMenuIsSizedAndPlacedByItsEntriesTheViewAndTheAnchor) {
  struct Row {
    const char* what;
    std::vector<std::string> entries;
    double viewWidth;
    bool below, matchWidth;
    CGRect frame;
  };
  const std::string fifty(50, 'x');  // 450 points at 9 points a character
  const Row rows[] = {
      {"longest entry", {"Select", "Sort by Name"}, 390, false, false, CGRectMake(276, 69, 108, 80)},
      {"below the anchor", {"Select", "Sort by Name"}, 390, true, false, CGRectMake(276, 91, 108, 80)},
      {"anchor's width", {"Select", "Sort by Name", "Share"}, 390, false, true, CGRectMake(340, 69, 44, 120)},
      {"wider than the view", {"Open", fifty}, 390, false, false, CGRectMake(38, 69, 346, 80)},
      {"as wide as the view", {fifty}, 450, false, false, CGRectMake(-22, 69, 406, 40)},
      {"anchor's width wins", {fifty}, 390, true, true, CGRectMake(340, 91, 44, 40)},
  };
  for (const auto& row : rows) {
    screen->view()->setFrame(CGRectMake(0, 0, row.viewWidth, 844));
    show(row.entries, row.below, row.matchWidth);
    ASSERT_NE(menu(), nullptr) << row.what;
    EXPECT_EQ(menu()->frame(), row.frame) << row.what;
    EXPECT_EQ(popupMenuOverlay()->frame(), CGRectMake(-44, -15, row.viewWidth, 844)) << row.what;
    dismissPopupMenu();
  }
}

TEST_F(PopupMenuTest, TheLongestEntryIsCountedInCharactersAndTiesKeepTheEarlierOne) {
  struct Row {
    const char* what;
    std::vector<std::string> entries;
    double width;
  };
  auto measurer = std::make_shared<TableMeasurer>(std::map<std::string, double>{
      {"iiii", 20}, {"WWWW", 80}, {"WWW", 60}, {"abcd", 36}, {"abc", 27},
      {"e\u0301e\u0301e\u0301", 27}, {"e\u0301e\u0301e\u0301e\u0301", 30}});
  TextMeasurer::install(measurer);
  const Row rows[] = {
      {"a tie keeps the earlier", {"iiii", "WWWW"}, 20},
      {"more characters beat a wider text", {"WWW", "iiii"}, 20},
      {"an accented letter is one character", {"e\u0301e\u0301e\u0301", "abcd"}, 36},
      {"and still counts as one", {"abc", "e\u0301e\u0301e\u0301e\u0301"}, 30},
  };
  for (const auto& row : rows) {
    measurer->fonts.clear();
    show(row.entries);
    EXPECT_EQ(menu()->frame().width(), row.width) << row.what;
    EXPECT_EQ(measurer->fonts, std::vector<UIFont>{UIFont::systemFontOfSize(18)}) << row.what;
    dismissPopupMenu();
  }
}

TEST_F(PopupMenuTest, ShowingBuildsAnOverlayWithACloserAndOneRowPerEntry) {
  show({"Select", "Sort by Name"});

  auto overlay = popupMenuOverlay();
  EXPECT_EQ(overlay->superview(), screen->view());
  EXPECT_EQ(screen->view()->subviews().back(), overlay);
  EXPECT_FALSE(overlay->isHidden());
  ASSERT_EQ(overlay->subviews().size(), 2u);
  auto closer = as<UIButton>(overlay->subviews()[0]);
  ASSERT_NE(closer, nullptr);
  EXPECT_EQ(closer->frame(), CGRectMake(0, 0, 390, 844));

  auto m = menu();
  ASSERT_EQ(m->subviews().size(), 2u);
  for (long i = 0; i < 2; ++i) {
    auto row = as<UIButton>(m->subviews()[static_cast<size_t>(i)]);
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->frame(), CGRectMake(10, 40.0 * static_cast<double>(i), 118, 40));
    EXPECT_EQ(row->tag(), i);
  }
  EXPECT_EQ(popupMenuEntries(), (std::vector<std::string>{"Select", "Sort by Name"}));
}

TEST_F(PopupMenuTest, PressingAnEntryClosesTheMenuThenCallsTheHandlerAndATouchOutsideOnlyCloses) {
  bool closedWhenCalled = false;
  showPopupMenu(*screen, anchor, {"Select", "Sort by Name", "Share"}, false, false, [&](long index) {
    pressed.push_back(index);
    closedWhenCalled = popupMenuOverlay()->isHidden() && popupMenuEntries().empty();
  });

  EXPECT_FALSE(pressPopupMenuEntry(3)) << "no such entry";
  EXPECT_FALSE(pressPopupMenuEntry(-1));
  EXPECT_TRUE(pressPopupMenuEntry(2));
  EXPECT_EQ(pressed, std::vector<long>{2});
  EXPECT_TRUE(closedWhenCalled);
  EXPECT_TRUE(popupMenuOverlay()->subviews().empty());
  EXPECT_FALSE(pressPopupMenuEntry(0)) << "nothing left to press";
  EXPECT_FALSE(dismissPopupMenu());

  // A touch outside closes without the handler.
  show({"Select", "Share"});
  EXPECT_TRUE(dismissPopupMenu());
  EXPECT_EQ(pressed, std::vector<long>{2});
  EXPECT_TRUE(popupMenuOverlay()->isHidden());
  EXPECT_TRUE(popupMenuOverlay()->subviews().empty());
  EXPECT_TRUE(popupMenuEntries().empty());
}

TEST_F(PopupMenuTest, TheNextMenuReplacesTheKeptHandlerAndTheShownMenuEvenFromAHandler) {
  // A menu closed without a choice, then a second menu over a third: only the last one answers.
  showPopupMenu(*screen, anchor, {"A0", "A1"}, false, false, recorder(100));
  dismissPopupMenu();
  showPopupMenu(*screen, anchor, {"B0", "B1"}, false, false, recorder(200));
  showPopupMenu(*screen, anchor, {"C0", "C1", "C2"}, false, false, recorder(300));
  EXPECT_EQ(popupMenuEntries(), (std::vector<std::string>{"C0", "C1", "C2"}));
  EXPECT_EQ(popupMenuOverlay()->subviews().size(), 2u);
  pressPopupMenuEntry(1);
  EXPECT_EQ(pressed, std::vector<long>{301});

  // A press reaching the controller later (a person's touch) still finds the kept handler.
  auto sender = std::make_shared<UIButton>();
  sender->setTag(7);
  screen->performAction("didPress:", sender);
  EXPECT_EQ(pressed, (std::vector<long>{301, 307}));

  // A handler may open the next menu.
  showPopupMenu(*screen, anchor, {"Sort"}, false, false, [this](long) {
    showPopupMenu(*screen, anchor, {"Name", "Date"}, true, false, recorder(10));
  });
  pressPopupMenuEntry(0);
  EXPECT_EQ(popupMenuEntries(), (std::vector<std::string>{"Name", "Date"}));
  pressPopupMenuEntry(1);
  EXPECT_EQ(pressed, (std::vector<long>{301, 307, 11}));
}

TEST_F(PopupMenuTest, OneOverlayMovesBetweenScreensUntilThePlatformIsReset) {
  auto other = std::make_shared<UIViewController>();
  auto overlay = popupMenuOverlay();
  show({"Select"});
  dismissPopupMenu();

  auto otherAnchor = std::make_shared<UIView>(CGRectMake(0, 100, 50, 20));
  other->view()->addSubview(otherAnchor);
  showPopupMenu(*other, otherAnchor, {"Select"}, true, true, recorder());

  EXPECT_EQ(popupMenuOverlay(), overlay);
  EXPECT_EQ(overlay->superview(), other->view());
  EXPECT_EQ(screen->view()->subviews(), std::vector<std::shared_ptr<UIView>>{bar});
  EXPECT_EQ(menu()->frame(), CGRectMake(0, 120, 50, 40));
  pressPopupMenuEntry(0);
  EXPECT_EQ(pressed, std::vector<long>{0});

  resetPlatformState();
  EXPECT_NE(popupMenuOverlay(), overlay);
}

TEST_F(PopupMenuTest, AClosedScreenLeavesTheMenuInert) {
  show({"Select"});
  screen.reset();
  EXPECT_TRUE(popupMenuEntries().empty());
  EXPECT_FALSE(pressPopupMenuEntry(0));
  EXPECT_FALSE(dismissPopupMenu());
  EXPECT_TRUE(pressed.empty());
}

}  // namespace
}  // namespace nimbrel
