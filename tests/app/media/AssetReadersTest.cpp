#include "app/media/AssetReaders.h"

#include <gtest/gtest.h>

#include "app/SimTest.h"
#include "backends/sim/Iso8601.h"
#include "platform/foundation/NSLocale.h"
#include "platform/foundation/NSTimeZone.h"

namespace nimbrel {
namespace {

class AssetReadersTest : public testing::SimTest {
 protected:
  void SetUp() override {
    start(R"({"photos": {"assets": [
      {"id": "IMG/L0/001", "filename": "IMG_0042.HEIC", "fileSize": 16777217}
    ]}})");
  }

  // An asset straight from a record, for sizes and resource counts a fixture cannot state.
  static PHAsset withFileSize(std::optional<std::int64_t> size, int resources = 1) {
    auto record = std::make_shared<PHAssetRecord>();
    record->localIdentifier = "R/L0/001";
    record->filename = "R.JPG";
    record->fileSize = size;
    record->resourceCount = resources;
    return PHAsset(record);
  }
};

TEST_F(AssetReadersTest, FileNameIsTheAssetsFilenameValue) {
  auto asset = PHAsset::fetchAssetsWithOptions(nullptr)[0];
  EXPECT_EQ(assetFileName(*asset), "IMG_0042.HEIC");
  EXPECT_EQ(assetFileName(PHAsset()), std::nullopt) << "a bare asset answers no key";
}

TEST_F(AssetReadersTest, FileSizeKeepsTheTwentyFourLeadingBitsCutTowardZero) {
  const std::pair<std::int64_t, std::uint64_t> rows[] = {
      {0, 0},
      {1, 1},
      {2'400'000, 2'400'000},
      {16'777'215, 16'777'215},
      {16'777'216, 16'777'216},
      {16'777'217, 16'777'216},
      {16'777'219, 16'777'218},  // to the nearest would give 16'777'220
      {33'554'435, 33'554'432},
      {4'294'967'295, 4'294'967'040},
      {9'223'372'036'854'775'807, 9'223'371'487'098'961'920},
  };
  for (auto [stored, expected] : rows) {
    EXPECT_EQ(assetFileSize(withFileSize(stored)), expected) << stored;
  }
  EXPECT_EQ(assetFileSize(withFileSize(5000, 3)), 5000u) << "only the first resource counts";
}

TEST_F(AssetReadersTest, SizeTextUsesTheFloatStepAndSizeInKBDoesNot) {
  auto asset = PHAsset::fetchAssetsWithOptions(nullptr)[0];
  EXPECT_EQ(assetSizeText(*asset), "16.00 MB");
  EXPECT_EQ(assetSizeInKB(*asset), 16'777) << "16'777'217 / 1000, without the float step";

  const std::pair<std::int64_t, long> kb[] = {{0, 0}, {999, 0}, {1000, 1}, {1999, 1}, {16'777'219, 16'777}, {-1999, -1}};
  for (auto [stored, expected] : kb) EXPECT_EQ(assetSizeInKB(withFileSize(stored)), expected) << stored;
  EXPECT_EQ(assetSizeText(withFileSize(1023)), "1023 bytes");
}

TEST_F(AssetReadersTest, ListDatesFollowTheProcessLocaleAndZone) {
  Date moment{*sim::parseIso8601("2026-03-01T09:05:00Z")};
  EXPECT_EQ(listDateText(moment), "1 Mar 2026 09:05");
  NSTimeZone::setLocalTimeZoneName("Asia/Tokyo");
  EXPECT_EQ(listDateText(moment), "1 Mar 2026 18:05") << "a formatter is made for each call";
  NSLocale::setCurrentLocaleIdentifier("de_DE");
  EXPECT_EQ(listDateText(moment), "1 März 2026 18:05");
}

using AssetReadersDeathTest = AssetReadersTest;

TEST_F(AssetReadersDeathTest, NoResourceOrNoSizeOrANegativeSizeEndsTheProcess) {
  EXPECT_DEATH(assetFileSize(withFileSize(10, 0)), "Fatal error: Index out of range: file Nimbrel/PHAsset\\+Extension");
  EXPECT_DEATH(assetSizeInKB(withFileSize(10, 0)), "Fatal error: Index out of range: file Nimbrel/PHAsset\\+Extension");
  EXPECT_DEATH(assetSizeText(PHAsset()), "Index out of range") << "a bare asset has no resources";
  const char* message =
      "Fatal error: Unexpectedly found nil while unwrapping an Optional value: file Nimbrel/PHAsset\\+Extension";
  EXPECT_DEATH(assetFileSize(withFileSize(std::nullopt)), message);
  EXPECT_DEATH(assetSizeInKB(withFileSize(std::nullopt)), message);
  EXPECT_DEATH(assetFileSize(withFileSize(-1)), "less than UInt64.min: file Nimbrel/PHAsset\\+Extension");
}

}  // namespace
}  // namespace nimbrel
