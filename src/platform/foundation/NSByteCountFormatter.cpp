#include "platform/foundation/NSByteCountFormatter.h"

#include <unicode/numberformatter.h>

#include <array>
#include <optional>
#include <string_view>

#include "platform/foundation/NSLocale.h"

namespace {

constexpr std::array<std::string_view, 7> kUnits = {"bytes", "KB", "MB", "GB", "TB", "PB", "EB"};
constexpr std::array<int, 7> kFractionDigits = {0, 0, 1, 2, 2, 2, 2};

// Formatting a number is cheap; making the formatter is not. Each thread keeps the one for the
// locale it last saw, so no lock is needed around ICU.
std::string formatDecimal(const std::string& decimal) {
  struct Cached {
    std::string locale;
    std::optional<icu::number::LocalizedNumberFormatter> formatter;
  };
  thread_local Cached cached;
  std::string locale = NSLocale::currentLocale();
  if (!cached.formatter || cached.locale != locale) {
    cached.formatter = icu::number::NumberFormatter::withLocale(icu::Locale(locale.c_str()));
    cached.locale = std::move(locale);
  }
  UErrorCode status = U_ZERO_ERROR;
  icu::UnicodeString text = cached.formatter->formatDecimal(decimal, status).toString(status);
  if (U_FAILURE(status)) return decimal;
  std::string out;
  text.toUTF8String(out);
  return out;
}

}  // namespace

std::string NSByteCountFormatter::stringFromByteCount(std::int64_t byteCount,
                                                      NSByteCountFormatterCountStyle style) {
  if (byteCount == 0) return "Zero KB";
  const bool binary = style == NSByteCountFormatterCountStyle::memory ||
                      style == NSByteCountFormatterCountStyle::binary;
  const unsigned __int128 base = binary ? 1024 : 1000;
  const bool negative = byteCount < 0;
  const std::uint64_t magnitude = negative ? 0 - static_cast<std::uint64_t>(byteCount) : byteCount;

  // The rounding is done here, in integers, because the unit depends on its outcome (999,999
  // bytes are "1 MB", not "1,000 KB") and a double would misplace halves such as 1.05.
  std::size_t unit = 0;
  unsigned __int128 divisor = 1;
  while (unit + 1 < kUnits.size() && magnitude >= divisor * base) {
    ++unit;
    divisor *= base;
  }
  unsigned __int128 scale = 1;
  unsigned __int128 rounded = magnitude;
  for (;;) {
    scale = 1;
    for (int i = 0; i < kFractionDigits[unit]; ++i) scale *= 10;
    rounded = (static_cast<unsigned __int128>(magnitude) * scale * 2 + divisor) / (divisor * 2);
    if (unit + 1 < kUnits.size() && rounded >= base * scale) {
      ++unit;
      divisor *= base;
      continue;
    }
    break;
  }

  std::string decimal = negative ? "-" : "";
  decimal += std::to_string(static_cast<std::uint64_t>(rounded / scale));
  if (scale > 1) {
    std::string fraction =
        std::to_string(static_cast<std::uint64_t>(rounded % scale + scale)).substr(1);
    decimal += '.';
    decimal += fraction;  // ICU drops trailing zeros
  }
  std::string text = formatDecimal(decimal);
  text += ' ';
  text += unit == 0 && magnitude == 1 ? std::string_view("byte") : kUnits[unit];
  return text;
}
