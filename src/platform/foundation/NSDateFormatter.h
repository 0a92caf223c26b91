#pragma once

#include <memory>
#include <mutex>
#include <string>

#include "platform/foundation/Date.h"

// The platform's date and time styles, with its raw values.
enum class NSDateFormatterStyle : int { none = 0, short_ = 1, medium = 2, long_ = 3, full = 4 };

// Dates as text in a locale and time zone, either in a fixed pattern ("d MMM yyyy HH:mm", ICU
// pattern syntax) or in the locale's date and time styles. A non-empty pattern wins over the
// styles; with no pattern and both styles none the text is empty. Starts with the process locale
// and time zone of the moment it is made. Safe to share between threads.
class NSDateFormatter {
 public:
  NSDateFormatter();
  ~NSDateFormatter();
  // Copies the settings; each copy builds its own ICU formatter.
  NSDateFormatter(const NSDateFormatter& other);
  NSDateFormatter& operator=(const NSDateFormatter& other);

  void setDateFormat(std::string pattern);
  void setDateStyle(NSDateFormatterStyle style);
  void setTimeStyle(NSDateFormatterStyle style);
  void setLocale(std::string identifier);
  // An IANA name; a name ICU does not know formats as GMT.
  void setTimeZone(std::string name);

  std::string dateFormat() const;
  NSDateFormatterStyle dateStyle() const;
  NSDateFormatterStyle timeStyle() const;
  std::string locale() const;
  std::string timeZone() const;

  // "" for a date that is not finite or a pattern ICU rejects.
  std::string stringFromDate(Date date) const;

 private:
  struct Settings {
    std::string dateFormat;
    NSDateFormatterStyle dateStyle = NSDateFormatterStyle::none;
    NSDateFormatterStyle timeStyle = NSDateFormatterStyle::none;
    std::string locale;
    std::string timeZone;
  };
  struct Cache;

  // Applies `change` to the settings; drops the built formatter when they differ afterwards.
  template <class Change>
  void update(Change change);

  mutable std::mutex mutex_;
  Settings settings_;
  // Built on first use after a change: making an ICU formatter costs far more than using one.
  mutable std::unique_ptr<Cache> cache_;
};

using DateFormatter = NSDateFormatter;
