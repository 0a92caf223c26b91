#include "platform/uikit/UIStoryboard.h"

#include <gtest/gtest.h>

#include "platform/uikit/UIViewController.h"

namespace {

// Fresh controllers named after their identifier, with the view not loaded, are StoryBoardTest's.
TEST(UIStoryboardTest, OnlyTheExactNameFindsASceneAnIdentifierTheSceneSetItselfIsKeptAndTheInitialSceneIsApart) {
  UIStoryboard::registerScene("Main", "Home", [] { return std::make_shared<UIViewController>(); });
  UIStoryboard::registerScene("Main", "Alias", [] {
    auto vc = std::make_shared<UIViewController>();
    vc->setStoryboardIdentifier("Real");
    return vc;
  });
  struct Row {
    const char* storyboard;
    const char* identifier;
  };
  for (const Row& row : {Row{"Main", "home"}, Row{"Main", ""}, Row{"Other", "Home"}}) {
    auto board = UIStoryboard::storyboardWithName(row.storyboard);
    EXPECT_EQ(board.instantiateViewControllerWithIdentifier(row.identifier), nullptr)
        << row.storyboard << "/" << row.identifier;
    EXPECT_FALSE(board.containsIdentifier(row.identifier));
  }
  EXPECT_EQ(UIStoryboard::storyboardWithName("Other").instantiateInitialViewController(), nullptr);
  auto vc = UIStoryboard::storyboardWithName("Main").instantiateViewControllerWithIdentifier("Alias");
  EXPECT_EQ(vc->storyboardIdentifier(), "Real");

  UIStoryboard::setInitialScene("Main", [] {
    auto vc = std::make_shared<UIViewController>();
    vc->setTitle("initial");
    return vc;
  });
  UIStoryboard::registerScene("Main", "B", [] { return std::make_shared<UIViewController>(); });
  auto initial = UIStoryboard::storyboardWithName("Main").instantiateInitialViewController();

  ASSERT_NE(initial, nullptr);
  EXPECT_EQ(initial->title(), "initial");
  EXPECT_EQ(UIStoryboard::identifiers("Main"), (std::vector<std::string>{"Alias", "B", "Home"}))
      << "the initial scene is not among the identified ones";
}

}  // namespace
