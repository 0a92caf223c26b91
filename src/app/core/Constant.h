#pragma once

#include <optional>
#include <string>

#include "app/core/DeviceType.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/uikit/UIImage.h"

namespace nimbrel {

// Process-wide values, made on first use.
class Constant {
 public:
  Constant() = delete;

  // Every preferences access of the program goes through here.
  static NSUserDefaults& userDefaults();
  // The store page in its plain form, the text that is shared.
  static const std::string& shareUrl();
  // The store page in its regional form, opened by the store application.
  static const std::string& rateUrl();
  // The publisher's pages.
  static const std::string& privacyUrl();
  static const std::string& termsUrl();

  static DeviceType deviceType();
  static void setDeviceType(DeviceType type);
  // Worked out once, on first read, from `deviceType`.
  static bool isIpad();
  static const std::optional<UIImage>& musicPlaceholder();

  // Forgets the values worked out so far (tests).
  static void reset();
};

}  // namespace nimbrel
