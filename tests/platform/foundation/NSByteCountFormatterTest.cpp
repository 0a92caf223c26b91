#include "platform/foundation/NSByteCountFormatter.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "platform/foundation/NSLocale.h"

namespace {

using Style = NSByteCountFormatterCountStyle;

struct Row {
  std::int64_t count;
  Style style;
  const char* locale;
  const char* expected;
};

constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();

// Rows alternate locales on purpose: the formatter must follow the process locale as it changes.
const Row kRows[] = {
    {0, Style::file, "en_US", "Zero KB"},
    {0, Style::memory, "en_US", "Zero KB"},
    {1, Style::file, "en_US", "1 byte"},
    {2, Style::file, "en_US", "2 bytes"},
    {999, Style::file, "en_US", "999 bytes"},
    {1000, Style::file, "en_US", "1 KB"},
    {1499, Style::file, "en_US", "1 KB"},
    {1500, Style::file, "en_US", "2 KB"},
    {999'499, Style::file, "en_US", "999 KB"},
    {999'500, Style::file, "en_US", "1 MB"},
    {999'999, Style::decimal, "en_US", "1 MB"},
    {1'234'567, Style::file, "en_US", "1.2 MB"},
    {1'250'000, Style::file, "en_US", "1.3 MB"},
    {1'050'000, Style::file, "en_US", "1.1 MB"},
    {2'000'000, Style::decimal, "en_US", "2 MB"},
    {999'950'000, Style::file, "en_US", "1 GB"},
    {1'005'000'000, Style::file, "en_US", "1.01 GB"},
    {73'200'000'000, Style::file, "en_US", "73.2 GB"},
    {128'000'000'000, Style::decimal, "en_US", "128 GB"},
    {1'234'567'890'123, Style::file, "en_US", "1.23 TB"},
    {999'995'000'000'000, Style::file, "en_US", "1 PB"},
    {kMax, Style::file, "en_US", "9.22 EB"},
    {-1, Style::file, "en_US", "-1 byte"},
    {-5, Style::file, "en_US", "-5 bytes"},
    {-1'500'000, Style::file, "en_US", "-1.5 MB"},
    {-999'999, Style::file, "en_US", "-1 MB"},
    {kMin, Style::file, "en_US", "-9.22 EB"},

    {1000, Style::memory, "en_US", "1,000 bytes"},
    {1023, Style::binary, "en_US", "1,023 bytes"},
    {1024, Style::memory, "en_US", "1 KB"},
    {1535, Style::memory, "en_US", "1 KB"},
    {1536, Style::memory, "en_US", "2 KB"},
    {1'048'575, Style::memory, "en_US", "1 MB"},
    {1'048'576, Style::memory, "en_US", "1 MB"},
    {1'572'864, Style::binary, "en_US", "1.5 MB"},
    {1'073'741'824, Style::memory, "en_US", "1 GB"},
    {1'000'000'000, Style::memory, "en_US", "953.7 MB"},
    {kMax, Style::memory, "en_US", "8 EB"},
    {kMin, Style::binary, "en_US", "-8 EB"},

    {999, Style::file, "de_DE", "999 bytes"},
    {1'234'567, Style::file, "de_DE", "1,2 MB"},
    {1'234'567, Style::file, "en_US", "1.2 MB"},
    {73'200'000'000, Style::decimal, "de_DE", "73,2 GB"},
    {1'234'567'890'123, Style::file, "de_DE", "1,23 TB"},
    {-1'500'000, Style::file, "de_DE", "-1,5 MB"},
    {1000, Style::memory, "de_DE", "1.000 bytes"},
    {1'572'864, Style::memory, "de_DE", "1,5 MB"},
    {1000, Style::memory, "fr_FR", "1\u202F000 bytes"},
};

TEST(NSByteCountFormatterTest, AdaptiveUnitsRoundingAndLocale) {
  for (const Row& row : kRows) {
    NSLocale::setCurrentLocaleIdentifier(row.locale);
    EXPECT_EQ(NSByteCountFormatter::stringFromByteCount(row.count, row.style), row.expected)
        << row.count << " in style " << static_cast<int>(row.style) << ", " << row.locale;
  }
}

}  // namespace
