#include "app/core/FileType.h"

#include <gtest/gtest.h>

namespace nimbrel {
namespace {

TEST(FileTypeTest, OnlyTheFourRawValuesMakeAKind) {
  for (auto kind : {FileType::docs, FileType::photo, FileType::video, FileType::music}) {
    EXPECT_EQ(fileTypeFromRawValue(rawValue(kind)), kind);
  }
  EXPECT_FALSE(fileTypeFromRawValue("Photo"));
  EXPECT_FALSE(fileTypeFromRawValue("audio"));
  EXPECT_FALSE(fileTypeFromRawValue(""));
}

}  // namespace
}  // namespace nimbrel
