#include "platform/foundation/NSDateFormatter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include "platform/foundation/NSLocale.h"
#include "platform/foundation/NSTimeZone.h"

namespace {

using Style = NSDateFormatterStyle;

// 2024-07-15 13:05:00 UTC, a Monday in Lisbon's summer time (UTC+1).
constexpr Date kSummer = Date::fromUnix(1'721'048'700);
// 2024-01-05 23:30:00 UTC: Lisbon is on UTC then, Tokyo already on the 6th.
constexpr Date kWinter = Date::fromUnix(1'704'497'400);

TEST(NSDateFormatterTest, FixedPatternInLocalesAndZones) {
  struct Row {
    const char* locale;
    const char* zone;
    Date date;
    const char* expected;
  };
  const Row rows[] = {
      {"en_US", "UTC", kSummer, "15 Jul 2024 13:05"},
      {"en_US", "Europe/Lisbon", kSummer, "15 Jul 2024 14:05"},
      {"en_US", "Europe/Lisbon", kWinter, "5 Jan 2024 23:30"},
      {"en_US", "Asia/Tokyo", kWinter, "6 Jan 2024 08:30"},
      {"en_US", "America/New_York", kSummer, "15 Jul 2024 09:05"},
      {"fr_FR", "UTC", kSummer, "15 juil. 2024 13:05"},
      {"fr_FR", "Europe/Paris", kWinter, "6 janv. 2024 00:30"},
      {"de_DE", "UTC", kWinter, "5 Jan. 2024 23:30"},
      {"en_US", "UTC", Date{0}, "1 Jan 2001 00:00"},
      {"en_US", "UTC", Date::fromUnix(-86'400.5), "30 Dec 1969 23:59"},
      {"en_US", "UTC", Date{std::nan("")}, ""},  // no moment, nothing to print
      {"en_US", "UTC", Date{std::numeric_limits<double>::infinity()}, ""},
  };
  for (const Row& row : rows) {
    NSDateFormatter formatter;
    formatter.setDateFormat("d MMM yyyy HH:mm");
    formatter.setLocale(row.locale);
    formatter.setTimeZone(row.zone);
    EXPECT_EQ(formatter.stringFromDate(row.date), row.expected) << row.locale << ", " << row.zone;
  }
}

TEST(NSDateFormatterTest, DateAndTimeStyles) {
  struct Row {
    const char* locale;
    Style date;
    Style time;
    const char* expected;
  };
  const Row rows[] = {
      {"en_US", Style::none, Style::none, ""},
      {"en_US", Style::short_, Style::none, "7/15/24"},
      {"en_US", Style::medium, Style::none, "Jul 15, 2024"},
      {"en_US", Style::long_, Style::none, "July 15, 2024"},
      {"en_US", Style::full, Style::none, "Monday, July 15, 2024"},
      {"en_US", Style::none, Style::short_, "1:05\u202FPM"},
      {"en_US", Style::none, Style::medium, "1:05:00\u202FPM"},
      {"en_US", Style::medium, Style::short_, "Jul 15, 2024, 1:05\u202FPM"},
      {"en_US", Style::long_, Style::long_, "July 15, 2024 at 1:05:00\u202FPM UTC"},
      {"fr_FR", Style::long_, Style::none, "15 juillet 2024"},
      {"fr_FR", Style::short_, Style::short_, "15/07/2024 13:05"},
      {"de_DE", Style::medium, Style::short_, "15.07.2024, 13:05"},
  };
  for (const Row& row : rows) {
    NSDateFormatter formatter;
    formatter.setLocale(row.locale);
    formatter.setTimeZone("UTC");
    formatter.setDateStyle(row.date);
    formatter.setTimeStyle(row.time);
    EXPECT_EQ(formatter.stringFromDate(kSummer), row.expected)
        << row.locale << " " << static_cast<int>(row.date) << "/" << static_cast<int>(row.time);
  }
}

// One formatter through a series of settings: each rebuilds what it caches, and a pattern wins
// over styles whichever was set first.
TEST(NSDateFormatterTest, EverySettingTakesEffectAndAPatternWinsOverStyles) {
  NSDateFormatter f;
  f.setTimeZone("UTC");
  f.setDateStyle(Style::long_);
  EXPECT_EQ(f.stringFromDate(kSummer), "July 15, 2024");
  f.setDateFormat("yyyy-MM-dd");
  EXPECT_EQ(f.stringFromDate(kSummer), "2024-07-15");
  f.setTimeStyle(Style::short_);
  EXPECT_EQ(f.stringFromDate(kSummer), "2024-07-15");
  f.setDateFormat("");
  EXPECT_EQ(f.stringFromDate(kSummer), "July 15, 2024 at 1:05\u202FPM");
  f.setDateFormat("d MMMM HH:mm");
  EXPECT_EQ(f.stringFromDate(kSummer), "15 July 13:05");
  f.setLocale("fr_FR");
  EXPECT_EQ(f.stringFromDate(kSummer), "15 juillet 13:05");
  f.setTimeZone("Europe/Lisbon");
  EXPECT_EQ(f.stringFromDate(kSummer), "15 juillet 14:05");
  f.setDateFormat("MMMM");
  EXPECT_EQ(f.stringFromDate(kSummer), "juillet");
  f.setDateFormat("");
  f.setDateStyle(Style::short_);
  f.setTimeStyle(Style::none);
  EXPECT_EQ(f.stringFromDate(kSummer), "15/07/2024");
  f.setTimeStyle(Style::short_);
  EXPECT_EQ(f.stringFromDate(kSummer), "15/07/2024 14:05");
}

TEST(NSDateFormatterTest, StartsWithTheProcessLocaleAndZoneOfItsMaking) {
  NSDateFormatter defaults;
  EXPECT_EQ(defaults.locale(), "en_US");
  EXPECT_EQ(defaults.timeZone(), "UTC");
  EXPECT_EQ(defaults.dateStyle(), Style::none);
  EXPECT_EQ(defaults.stringFromDate(kSummer), "") << "no pattern, no styles";

  NSLocale::setCurrentLocaleIdentifier("fr_FR");
  NSTimeZone::setLocalTimeZoneName("Europe/Lisbon");
  NSDateFormatter made;
  made.setDateFormat("d MMMM HH:mm");
  NSLocale::setCurrentLocaleIdentifier("de_DE");
  NSTimeZone::setLocalTimeZoneName("Asia/Tokyo");
  EXPECT_EQ(made.stringFromDate(kSummer), "15 juillet 14:05");
  EXPECT_EQ(NSDateFormatter().locale(), "de_DE");
  EXPECT_EQ(NSDateFormatter().timeZone(), "Asia/Tokyo");
}

TEST(NSDateFormatterTest, CopiesAreIndependent) {
  NSDateFormatter original;
  original.setDateFormat("HH:mm");
  original.setTimeZone("UTC");
  EXPECT_EQ(original.stringFromDate(kSummer), "13:05");
  NSDateFormatter copy = original;
  copy.setTimeZone("Asia/Tokyo");
  EXPECT_EQ(copy.stringFromDate(kSummer), "22:05");
  EXPECT_EQ(original.stringFromDate(kSummer), "13:05");
  original = copy;
  EXPECT_EQ(original.stringFromDate(kSummer), "22:05");
}

TEST(NSDateFormatterTest, OneFormatterServesManyThreadsWhileTheProcessLocaleIsSet) {
  NSDateFormatter formatter;
  formatter.setDateFormat("d MMM yyyy HH:mm");
  formatter.setTimeZone("UTC");
  std::vector<std::string> results(4);
  std::vector<std::string> locales(4);
  std::vector<std::thread> threads;
  for (std::size_t t = 0; t < results.size(); ++t) {
    threads.emplace_back([&, t] {
      for (int i = 0; i < 200; ++i) {
        // Always the same value, so only unguarded access could make a difference.
        if (t == 0) NSLocale::setCurrentLocaleIdentifier("en_US");
        results[t] =
            formatter.stringFromDate(kSummer.addingTimeInterval(60.0 * static_cast<double>(t)));
        locales[t] = NSDateFormatter().locale();
      }
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(results, (std::vector<std::string>{"15 Jul 2024 13:05", "15 Jul 2024 13:06",
                                               "15 Jul 2024 13:07", "15 Jul 2024 13:08"}));
  EXPECT_EQ(locales, std::vector<std::string>(4, "en_US"));
}

}  // namespace
