#include "app/kit/DesignableTextField.h"

#include <gtest/gtest.h>

#include "platform/PlatformState.h"
#include "platform/foundation/ManualRunLoop.h"

namespace nimbrel {
namespace {

class DesignableTextFieldTest : public ::testing::Test {
 protected:
  ManualRunLoop loop;
  void SetUp() override { resetPlatformState(); }
  void TearDown() override { resetPlatformState(); }
};

TEST_F(DesignableTextFieldTest, PaddingIsAnEmptyFifteenPointLeftViewAndTurningItOffKeepsTheView) {
  auto field = std::make_shared<DesignableTextField>(CGRectMake(20, 100, 300, 44));
  EXPECT_FALSE(field->isLeftPadding());
  EXPECT_EQ(field->leftView(), nullptr);
  field->setIsLeftPadding(true);
  auto pad = field->leftView();
  ASSERT_NE(pad, nullptr);
  EXPECT_TRUE(field->isLeftPadding());
  EXPECT_EQ(pad->frame(), CGRectMake(0, 0, 15, 44));
  EXPECT_TRUE(pad->subviews().empty());
  EXPECT_EQ(field->leftViewMode(), UITextFieldViewMode::always);
  EXPECT_TRUE(field->showsLeftView());
  field->setIsLeftPadding(false);
  EXPECT_FALSE(field->isLeftPadding());
  EXPECT_EQ(field->leftViewMode(), UITextFieldViewMode::never);
  EXPECT_EQ(field->leftView(), pad);
  EXPECT_FALSE(field->showsLeftView());
  // On again: a new view of the field's height now.
  field->setFrame(CGRectMake(20, 100, 300, 50));
  field->setLeftPadding(true);
  EXPECT_NE(field->leftView(), pad);
  EXPECT_EQ(field->leftView()->frame(), CGRectMake(0, 0, 15, 50));
  EXPECT_FALSE(field->isLeftPadding()) << "applying a choice does not store it";
}

}  // namespace
}  // namespace nimbrel
