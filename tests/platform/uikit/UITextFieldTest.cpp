#include "platform/uikit/UITextField.h"

#include <gtest/gtest.h>

namespace {

TEST(UITextFieldTest, TheLeftViewShowsAsItsModeAndTheEditingStateSayDrawnInsideTheField) {
  struct Row {
    UITextFieldViewMode mode;
    bool editing;
    bool shown;
  };
  const Row rows[] = {
      {UITextFieldViewMode::never, false, false},         {UITextFieldViewMode::never, true, false},
      {UITextFieldViewMode::whileEditing, false, false},  {UITextFieldViewMode::whileEditing, true, true},
      {UITextFieldViewMode::unlessEditing, false, true},  {UITextFieldViewMode::unlessEditing, true, false},
      {UITextFieldViewMode::always, false, true},         {UITextFieldViewMode::always, true, true},
  };
  for (const auto& row : rows) {
    auto field = std::make_shared<UITextField>();
    field->setLeftViewMode(row.mode);
    field->setEditing(row.editing);
    EXPECT_FALSE(field->showsLeftView()) << "without a left view nothing shows";
    field->setLeftView(std::make_shared<UIView>());
    EXPECT_EQ(field->showsLeftView(), row.shown)
        << "mode " << static_cast<int>(row.mode) << ", editing " << row.editing;
  }

  // The left view is drawn inside the field, not added as a subview.
  auto field = std::make_shared<UITextField>(CGRectMake(0, 0, 200, 40));
  auto left = std::make_shared<UIView>(CGRectMake(0, 0, 15, 40));
  int changes = 0;
  field->changed().observe([&] { ++changes; });

  field->setLeftView(left);
  field->setText("report");
  field->setText("report");

  EXPECT_TRUE(field->subviews().empty());
  EXPECT_EQ(left->superview(), nullptr);
  EXPECT_EQ(changes, 2) << "setting the same text again changes nothing a person sees";
}

}  // namespace
