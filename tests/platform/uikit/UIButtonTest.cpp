#include "platform/uikit/UIButton.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

namespace {

TEST(UIButtonTest, TitlesFollowTheStateAndFallBackToNormal) {
  using S = UIControlState;
  struct Row {
    const char* name;
    std::optional<std::string> normal, selected, disabled;
    bool isSelected, isEnabled;
    std::optional<std::string> shown;
  };
  const Row rows[] = {
      {"normal", "Edit", std::nullopt, std::nullopt, false, true, "Edit"},
      {"selected with its own title", "Edit", "Done", std::nullopt, true, true, "Done"},
      {"selected without its own title", "Edit", std::nullopt, std::nullopt, true, true, "Edit"},
      {"disabled with its own title", "Edit", "Done", "Wait", true, false, "Wait"},
      {"disabled without its own title", "Edit", std::nullopt, std::nullopt, false, false, "Edit"},
      {"no title at all", std::nullopt, std::nullopt, std::nullopt, true, true, std::nullopt},
  };
  for (const auto& row : rows) {
    UIButton button;
    if (row.normal) button.setTitle(row.normal, S::normal);
    if (row.selected) button.setTitle(row.selected, S::selected);
    if (row.disabled) button.setTitle(row.disabled, S::disabled);
    button.setSelected(row.isSelected);
    button.setEnabled(row.isEnabled);
    EXPECT_EQ(button.currentTitle(), row.shown) << row.name;
  }
}

TEST(UIButtonTest, ClearingAStateTitleOrImageFallsBackToNormalAgainAndChangesAreSignalled) {
  UIButton button;
  int changes = 0;
  button.changed().observe([&] { ++changes; });
  button.setTitle("Select", UIControlState::normal);
  button.setTitle("Cancel", UIControlState::selected);
  button.setImage(UIImage::named("grid"), UIControlState::normal);
  button.setImage(UIImage::named("list"), UIControlState::selected);
  button.setSelected(true);
  ASSERT_EQ(button.currentTitle(), "Cancel");
  ASSERT_EQ(button.currentImage(), UIImage::named("list"));
  button.setTitle(std::nullopt, UIControlState::selected);
  button.setImage(std::nullopt, UIControlState::selected);
  EXPECT_EQ(button.titleForState(UIControlState::selected), "Select");
  EXPECT_EQ(button.currentTitle(), "Select");
  EXPECT_EQ(button.currentImage(), UIImage::named("grid"));
  EXPECT_EQ(changes, 7);
  button.setEnabled(false);
  EXPECT_EQ(changes, 8);
}

}  // namespace
