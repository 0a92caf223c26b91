#include "app/core/Constant.h"

#include <mutex>

#include "platform/foundation/SharedInstance.h"

namespace nimbrel {

namespace {

// The outward addresses, fixed here and nowhere else.
constexpr const char* kStoreNumber = "6478112093";
constexpr const char* kPublisherSite = "https://nimbrel.app";

struct State {
  std::mutex mutex;
  DeviceType deviceType = DeviceType::iphone;
  std::optional<bool> isIpad;
};

// Reset with the other shared instances, so that each test starts from a new process's state.
State& state() {
  return *SharedInstance<State>::get();
}

}  // namespace

NSUserDefaults& Constant::userDefaults() {
  return NSUserDefaults::standardUserDefaults();
}

const std::string& Constant::shareUrl() {
  static const std::string url = std::string("https://apps.apple.com/app/id") + kStoreNumber;
  return url;
}

const std::string& Constant::rateUrl() {
  static const std::string url =
      std::string("https://apps.apple.com/in/app/id") + kStoreNumber + "?mt=8";
  return url;
}

const std::string& Constant::privacyUrl() {
  static const std::string url = std::string(kPublisherSite) + "/privacy.html";
  return url;
}

const std::string& Constant::termsUrl() {
  static const std::string url =
      std::string(kPublisherSite) + "/view_custom.php?v=7Q2K9&n=Terms-Of-Use";
  return url;
}

DeviceType Constant::deviceType() {
  std::lock_guard lock(state().mutex);
  return state().deviceType;
}

void Constant::setDeviceType(DeviceType type) {
  std::lock_guard lock(state().mutex);
  state().deviceType = type;
}

bool Constant::isIpad() {
  std::lock_guard lock(state().mutex);
  auto& s = state();
  if (!s.isIpad) s.isIpad = s.deviceType == DeviceType::ipad;
  return *s.isIpad;
}

const std::optional<UIImage>& Constant::musicPlaceholder() {
  static const std::optional<UIImage> image = UIImage::named("ic_music_placeholder");
  return image;
}

void Constant::reset() {
  std::lock_guard lock(state().mutex);
  state().deviceType = DeviceType::iphone;
  state().isIpad.reset();
}

}  // namespace nimbrel
