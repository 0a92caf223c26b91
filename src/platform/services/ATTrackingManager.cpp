#include "platform/services/ATTrackingManager.h"

#include "platform/services/PermissionAuthority.h"

ATTrackingManager::AuthorizationStatus ATTrackingManager::trackingAuthorizationStatus() {
  return static_cast<AuthorizationStatus>(
      PermissionAuthority::current()->status(PermissionAuthority::Kind::tracking));
}

void ATTrackingManager::requestTrackingAuthorizationWithCompletionHandler(
    std::function<void(AuthorizationStatus)> completion) {
  PermissionAuthority::current()->request(
      PermissionAuthority::Kind::tracking, [completion = std::move(completion)](int status) {
        if (completion) completion(static_cast<AuthorizationStatus>(status));
      });
}
