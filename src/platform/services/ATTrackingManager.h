#pragma once

#include <functional>

// App tracking transparency: the tracking prompt.
class ATTrackingManager {
 public:
  enum class AuthorizationStatus { notDetermined = 0, restricted = 1, denied = 2, authorized = 3 };
  static AuthorizationStatus trackingAuthorizationStatus();
  static void requestTrackingAuthorizationWithCompletionHandler(
      std::function<void(AuthorizationStatus)> completion);
};
