#pragma once

#include <compare>

using TimeInterval = double;

// A moment as seconds since 2001-01-01 00:00:00 UTC, kept as a double to full precision.
struct Date {
  TimeInterval timeIntervalSinceReferenceDate = 0;

  static constexpr TimeInterval kTimeIntervalBetween1970AndReferenceDate = 978307200.0;

  // The current moment of the installed run loop (virtual under the manual loop).
  static Date now();
  static constexpr Date fromUnix(double seconds) {
    return Date{seconds - kTimeIntervalBetween1970AndReferenceDate};
  }
  constexpr double timeIntervalSince1970() const {
    return timeIntervalSinceReferenceDate + kTimeIntervalBetween1970AndReferenceDate;
  }
  constexpr Date addingTimeInterval(TimeInterval t) const {
    return Date{timeIntervalSinceReferenceDate + t};
  }
  constexpr TimeInterval timeIntervalSinceDate(Date other) const {
    return timeIntervalSinceReferenceDate - other.timeIntervalSinceReferenceDate;
  }
  auto operator<=>(const Date&) const = default;
};
