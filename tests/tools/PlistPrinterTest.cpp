#include "plutil/PlistPrinter.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(PlistPrinter, LaysOutNestedValuesLikePlutil) {
  PlistValue v(PlistValue::Dictionary{
      {"list", PlistValue::Array{PlistValue::Dictionary{
                   {"url", PlistValue::Dictionary{{"relative", "file:///a%20b.pdf"}}},
                   {"openingDate", Date{794050200}},
                   {"filetype", "docs"}}}},
      {"flag", true},
      {"count", -3},
      {"ratio", 0.5},
      {"whole", 2.0},
      {"blob", Data{0x00, 0xAB, 0xFF}},
      {"text", "say \"hi\"\n\\ 😀"},
      {"none", PlistValue::Array{}},
      {"empty", PlistValue::Dictionary{}},
  });
  EXPECT_EQ(PlistPrinter::print(v),
            "{\n"
            "  \"list\" => [\n"
            "    0 => {\n"
            "      \"url\" => {\n"
            "        \"relative\" => \"file:///a%20b.pdf\"\n"
            "      }\n"
            "      \"openingDate\" => 2026-03-01 09:30:00 +0000\n"
            "      \"filetype\" => \"docs\"\n"
            "    }\n"
            "  ]\n"
            "  \"flag\" => true\n"
            "  \"count\" => -3\n"
            "  \"ratio\" => 0.5\n"
            "  \"whole\" => 2.0\n"
            "  \"blob\" => {length = 3, bytes = 0x00abff}\n"
            "  \"text\" => \"say \\\"hi\\\"\\n\\\\ 😀\"\n"
            "  \"none\" => [\n"
            "  ]\n"
            "  \"empty\" => {\n"
            "  }\n"
            "}\n");
}

TEST(PlistPrinter, DatesInUtcWithSecondsTruncated) {
  EXPECT_EQ(PlistPrinter::formatDate(Date{0}), "2001-01-01 00:00:00 +0000");
  EXPECT_EQ(PlistPrinter::formatDate(Date{59.999}), "2001-01-01 00:00:59 +0000");
  EXPECT_EQ(PlistPrinter::formatDate(Date{-0.5}), "2000-12-31 23:59:59 +0000");
  EXPECT_EQ(PlistPrinter::formatDate(Date::fromUnix(0)), "1970-01-01 00:00:00 +0000");
  EXPECT_EQ(PlistPrinter::formatDate(Date::fromUnix(1709164800)), "2024-02-29 00:00:00 +0000");
  EXPECT_EQ(PlistPrinter::formatDate(Date::fromUnix(253402300799)), "9999-12-31 23:59:59 +0000");
  EXPECT_EQ(PlistPrinter::formatDate(Date::fromUnix(-62135596800)), "0001-01-01 00:00:00 +0000");
  EXPECT_EQ(PlistPrinter::formatDate(Date{std::numeric_limits<double>::quiet_NaN()}), "(date nan)");
  EXPECT_EQ(PlistPrinter::formatDate(Date{-std::numeric_limits<double>::infinity()}),
            "(date -inf)");
}

}  // namespace
