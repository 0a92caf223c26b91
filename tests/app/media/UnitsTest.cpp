#include "app/media/Units.h"

#include <gtest/gtest.h>

namespace nimbrel {
namespace {

TEST(UnitsTest, ReadableUnitUsesBinaryThresholdsAndTwoDecimals) {
  const std::pair<std::int64_t, const char*> rows[] = {
      {0, "0 bytes"},
      {-5, "-5 bytes"},
      {1023, "1023 bytes"},
      {1024, "1.00 KB"},
      {1'048'575, "1024.00 KB"},
      {1'048'576, "1.00 MB"},
      {1'073'741'823, "1024.00 MB"},
      {1'073'741'824, "1.00 GB"},
      {2'400'000, "2.29 MB"},
      {5'000'000'000'000, "4656.61 GB"},
  };
  for (auto [bytes, text] : rows) EXPECT_EQ(Units(bytes).getReadableUnit(), text) << bytes;
}

}  // namespace
}  // namespace nimbrel
