#include "platform/foundation/NSDateFormatter.h"

#include <unicode/datefmt.h>
#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>
#include <unicode/unistr.h>

#include <cmath>
#include <utility>

#include "platform/foundation/NSLocale.h"
#include "platform/foundation/NSTimeZone.h"

struct NSDateFormatter::Cache {
  std::unique_ptr<icu::DateFormat> format;  // null when there is nothing to print or ICU refused
};

namespace {

icu::DateFormat::EStyle icuStyle(NSDateFormatterStyle style) {
  switch (style) {
    case NSDateFormatterStyle::short_: return icu::DateFormat::kShort;
    case NSDateFormatterStyle::medium: return icu::DateFormat::kMedium;
    case NSDateFormatterStyle::long_: return icu::DateFormat::kLong;
    case NSDateFormatterStyle::full: return icu::DateFormat::kFull;
    case NSDateFormatterStyle::none: break;
  }
  return icu::DateFormat::kNone;
}

template <class T>
bool assign(T& field, T value) {
  if (field == value) return false;
  field = std::move(value);
  return true;
}

}  // namespace

NSDateFormatter::NSDateFormatter() {
  settings_.locale = NSLocale::currentLocale();
  settings_.timeZone = NSTimeZone::localTimeZone();
}

NSDateFormatter::~NSDateFormatter() = default;

NSDateFormatter::NSDateFormatter(const NSDateFormatter& other) {
  std::lock_guard lock(other.mutex_);
  settings_ = other.settings_;
}

NSDateFormatter& NSDateFormatter::operator=(const NSDateFormatter& other) {
  if (this == &other) return *this;
  std::scoped_lock lock(mutex_, other.mutex_);
  settings_ = other.settings_;
  cache_.reset();
  return *this;
}

template <class Change>
void NSDateFormatter::update(Change change) {
  std::lock_guard lock(mutex_);
  if (change(settings_)) cache_.reset();
}

void NSDateFormatter::setDateFormat(std::string pattern) {
  update([&](Settings& s) { return assign(s.dateFormat, std::move(pattern)); });
}

void NSDateFormatter::setDateStyle(NSDateFormatterStyle style) {
  update([&](Settings& s) { return assign(s.dateStyle, style); });
}

void NSDateFormatter::setTimeStyle(NSDateFormatterStyle style) {
  update([&](Settings& s) { return assign(s.timeStyle, style); });
}

void NSDateFormatter::setLocale(std::string identifier) {
  update([&](Settings& s) { return assign(s.locale, std::move(identifier)); });
}

void NSDateFormatter::setTimeZone(std::string name) {
  update([&](Settings& s) { return assign(s.timeZone, std::move(name)); });
}

std::string NSDateFormatter::dateFormat() const {
  std::lock_guard lock(mutex_);
  return settings_.dateFormat;
}

NSDateFormatterStyle NSDateFormatter::dateStyle() const {
  std::lock_guard lock(mutex_);
  return settings_.dateStyle;
}

NSDateFormatterStyle NSDateFormatter::timeStyle() const {
  std::lock_guard lock(mutex_);
  return settings_.timeStyle;
}

std::string NSDateFormatter::locale() const {
  std::lock_guard lock(mutex_);
  return settings_.locale;
}

std::string NSDateFormatter::timeZone() const {
  std::lock_guard lock(mutex_);
  return settings_.timeZone;
}

std::string NSDateFormatter::stringFromDate(Date date) const {
  if (!std::isfinite(date.timeIntervalSinceReferenceDate)) return {};
  // An ICU formatter keeps a working calendar, so one use at a time.
  std::lock_guard lock(mutex_);
  if (!cache_) {
    cache_ = std::make_unique<Cache>();
    icu::Locale locale(settings_.locale.c_str());
    if (!settings_.dateFormat.empty()) {
      UErrorCode status = U_ZERO_ERROR;
      auto format = std::make_unique<icu::SimpleDateFormat>(
          icu::UnicodeString::fromUTF8(settings_.dateFormat), locale, status);
      if (U_SUCCESS(status)) cache_->format = std::move(format);
    } else if (settings_.dateStyle != NSDateFormatterStyle::none ||
               settings_.timeStyle != NSDateFormatterStyle::none) {
      // Both none would give ICU's own fallback pattern; the platform prints nothing then.
      cache_->format.reset(icu::DateFormat::createDateTimeInstance(
          icuStyle(settings_.dateStyle), icuStyle(settings_.timeStyle), locale));
    }
    if (cache_->format) {
      cache_->format->adoptTimeZone(
          icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(settings_.timeZone)));
    }
  }
  if (!cache_->format) return {};
  icu::UnicodeString text;
  cache_->format->format(date.timeIntervalSince1970() * 1000.0, text);
  std::string out;
  text.toUTF8String(out);
  return out;
}
