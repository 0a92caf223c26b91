#include "backends/desktop/FolderCopy.h"

#include <gtest/gtest.h>

namespace nimbrel::desktop {
namespace {

TEST(FolderCopyTest, ATakenNameGetsTheNextNumberBeforeItsExtension) {
  EXPECT_EQ(FolderCopy::candidate("notes", 3), "notes (3)");
  EXPECT_EQ(FolderCopy::candidate(".hidden", 2), ".hidden (2)");
  EXPECT_EQ(FolderCopy::copyInto("/nonexistent-folder", "/proc/self/exe"), std::nullopt);
}

}  // namespace
}  // namespace nimbrel::desktop
