#include "app/storage/StorageFigures.h"

#include <gtest/gtest.h>

#include "app/SimTest.h"

namespace nimbrel {
namespace {

TEST(StorageFiguresTest, CapacityTextOnItsEdges) {
  const std::pair<std::int64_t, const char*> rows[] = {
      {0, "0 B"},
      {999, "999 B"},
      {1'000, "1 KB"},
      {999'999, "1000 KB"},
      {1'000'000, "1 MB"},
      {1'500'000, "1.5 MB"},
      {999'999'999, "1000 MB"},
      {99'950'000'000, "100 GB"},
      {64'000'000'000, "64 GB"},
      {63'900'000'000, "63.9 GB"},
      {128'000'000'000, "128 GB"},
      {2'000'000'000'000, "2 TB"},
      {9'000'000'000'000'000'000, "9 EB"},
  };
  for (auto [bytes, text] : rows) EXPECT_EQ(capacityText(bytes), text) << bytes;
}

TEST(StorageFiguresTest, TheTwoShareFormsDifferWhereTheMultiplicationHappens) {
  // 1.5 MiB of 3 MiB: the run's form truncates 1.5 MiB to 1 before multiplying.
  EXPECT_FLOAT_EQ(runShare(1'572'864, 3'145'728), 100.0f / 3.0f / 100.0f);
  EXPECT_FLOAT_EQ(fastShare(1'572'864, 3'145'728), 1.0f * 100.0f / 3.0f / 100.0f);
  // A sum below one MiB counts as nothing in both.
  EXPECT_EQ(runShare(1'048'575, 128'000'000'000), 0.0f);
  EXPECT_EQ(fastShare(1'048'575, 128'000'000'000), 0.0f);
  // Where the float product differs from the integer one the two forms part.
  std::int64_t total = 128'000'000'000, sum = 33'333'333'333;
  float run = static_cast<float>((sum / 1048576) * 100) / static_cast<float>(total / 1048576) / 100.0f;
  float fast = static_cast<float>(sum / 1048576) * 100.0f / static_cast<float>(total / 1048576) / 100.0f;
  EXPECT_EQ(runShare(sum, total), run);
  EXPECT_EQ(fastShare(sum, total), fast);
}

TEST(StorageFiguresTest, UsedPercentageTruncates) {
  EXPECT_EQ(usedPercentage(100, 26), 74);
  EXPECT_EQ(usedPercentage(128'000'000'000, 33'420'000'000), 73) << "73.9 shows as 73";
}

class StorageVolumeTest : public testing::SimTest {};

// Readable figures are read by the e2e home_storage_line and storage_analysis scenarios.
TEST_F(StorageVolumeTest, UnreadableVolumeFiguresFailEachInItsWay) {
  start(R"({"volume": {"size": null, "free": null, "importantAvailable": null}})");
  EXPECT_FALSE(fileSystemSizeBytes());
  EXPECT_FALSE(fileSystemFreeBytes());
  EXPECT_EQ(volumeTotalBytes(), 0);
  EXPECT_EQ(importantUsageBytes(), 0);
}

TEST(StorageFiguresDeathTest, OverflowAndAZeroTotalEndTheProcess) {
  EXPECT_DEATH(checkedAdd(INT64_MAX, 1), "Fatal error: Arithmetic overflow");
  EXPECT_DEATH(checkedMul(INT64_MAX / 50, 100), "Fatal error: Arithmetic overflow");
  EXPECT_DEATH(usedPercentage(0, 0), "Fatal error: Division by zero");
}

}  // namespace
}  // namespace nimbrel
