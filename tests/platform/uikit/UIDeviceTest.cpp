#include "platform/uikit/UIDevice.h"

#include <gtest/gtest.h>

namespace {

TEST(UIDeviceTest, VersionChecksCompareNumbersPartByPart) {
  struct Row {
    const char* version;
    int major, minor, patch;
    bool atLeast;
  };
  const Row rows[] = {
      {"17.0", 14, 0, 0, true},   {"14.0", 14, 0, 0, true},   {"13.7", 14, 0, 0, false},
      {"17", 17, 0, 0, true},     {"17", 17, 0, 1, false},    {"16.4.1", 16, 4, 1, true},
      {"16.4", 16, 4, 1, false},  {"10.15", 10, 2, 0, true},  {"9.3.5", 10, 0, 0, false},
      {"100.0", 99, 9, 9, true},
  };
  for (const auto& row : rows) {
    UIDevice::currentDevice().configure(UIUserInterfaceIdiom::phone, row.version);
    EXPECT_EQ(UIDevice::currentDevice().isOperatingSystemAtLeastVersion(row.major, row.minor, row.patch),
              row.atLeast)
        << row.version << " >= " << row.major << "." << row.minor << "." << row.patch;
  }
}

}  // namespace
