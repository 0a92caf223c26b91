#include "backends/sim/Iso8601.h"

#include <cctype>

#include "platform/foundation/Date.h"

namespace nimbrel::sim {

namespace {

bool digits(std::string_view s, size_t pos, size_t count, int& out) {
  if (pos + count > s.size()) return false;
  out = 0;
  for (size_t i = pos; i < pos + count; ++i) {
    if (!std::isdigit(static_cast<unsigned char>(s[i]))) return false;
    out = out * 10 + (s[i] - '0');
  }
  return true;
}

// Days from 1970-01-01 to the civil date (proleptic Gregorian).
long long daysFromCivil(int y, int m, int d) {
  y -= m <= 2;
  const long long era = (y >= 0 ? y : y - 399) / 400;
  const unsigned yoe = static_cast<unsigned>(y - era * 400);
  const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + static_cast<long long>(doe) - 719468;
}

int daysInMonth(int y, int m) {
  static const int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  bool leap = (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
  return m == 2 && leap ? 29 : days[m - 1];
}

}  // namespace

std::optional<double> parseIso8601(std::string_view s) {
  int y, mo, d, h = 0, mi = 0, se = 0;
  if (!digits(s, 0, 4, y) || s.size() < 10 || s[4] != '-' || !digits(s, 5, 2, mo) || s[7] != '-' ||
      !digits(s, 8, 2, d)) {
    return std::nullopt;
  }
  if (mo < 1 || mo > 12 || d < 1 || d > daysInMonth(y, mo)) return std::nullopt;
  double fraction = 0;
  int offsetSeconds = 0;
  if (s.size() > 10) {
    if (s[10] != 'T' || !digits(s, 11, 2, h) || s.size() < 19 || s[13] != ':' ||
        !digits(s, 14, 2, mi) || s[16] != ':' || !digits(s, 17, 2, se)) {
      return std::nullopt;
    }
    if (h > 23 || mi > 59 || se > 60) return std::nullopt;
    size_t pos = 19;
    if (pos < s.size() && s[pos] == '.') {
      double scale = 0.1;
      ++pos;
      size_t start = pos;
      while (pos < s.size() && std::isdigit(static_cast<unsigned char>(s[pos]))) {
        fraction += (s[pos] - '0') * scale;
        scale /= 10;
        ++pos;
      }
      if (pos == start) return std::nullopt;
    }
    if (pos == s.size()) return std::nullopt;  // a zone is required
    if (s[pos] == 'Z') {
      ++pos;
    } else if (s[pos] == '+' || s[pos] == '-') {
      int oh, om;
      if (!digits(s, pos + 1, 2, oh) || pos + 6 > s.size() || s[pos + 3] != ':' ||
          !digits(s, pos + 4, 2, om)) {
        return std::nullopt;
      }
      offsetSeconds = (oh * 3600 + om * 60) * (s[pos] == '-' ? -1 : 1);
      pos += 6;
    } else {
      return std::nullopt;
    }
    if (pos != s.size()) return std::nullopt;
  }
  double unix = static_cast<double>(daysFromCivil(y, mo, d)) * 86400.0 + h * 3600 + mi * 60 + se +
                fraction - offsetSeconds;
  return unix - Date::kTimeIntervalBetween1970AndReferenceDate;
}

}  // namespace nimbrel::sim
