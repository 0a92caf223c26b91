#include "platform/uikit/UINib.h"

#include <gtest/gtest.h>

#include "platform/uikit/UIView.h"

namespace {

TEST(UINibTest, ANibMakesFreshTopLevelObjectsAtEachInstantiationAndOnlyItsExactNameFindsIt) {
  UINib::registerNib("Cell", [] {
    auto cell = std::make_shared<UIView>();
    cell->addSubview(std::make_shared<UIView>());
    return std::vector<std::shared_ptr<NSObject>>{cell, std::make_shared<UIView>()};
  });
  auto nib = UINib::nibWithNibName("Cell");
  ASSERT_NE(nib, nullptr);
  EXPECT_EQ(nib->name(), "Cell");

  auto first = nib->instantiateWithOwner(nullptr);
  auto second = nib->instantiateWithOwner(nullptr);

  ASSERT_EQ(first.size(), 2u);
  ASSERT_EQ(second.size(), 2u);
  for (size_t i = 0; i < 2; ++i) EXPECT_NE(first[i], second[i]);
  auto cell = std::dynamic_pointer_cast<UIView>(first[0]);
  ASSERT_NE(cell, nullptr);
  EXPECT_EQ(cell->subviews().size(), 1u);

  EXPECT_EQ(UINib::nibWithNibName("cell"), nullptr);
  EXPECT_EQ(UINib::nibWithNibName(""), nullptr);
}

}  // namespace
