#include "platform/mediaplayer/MPMediaLibrary.h"

#include "platform/services/PermissionAuthority.h"

MPMediaLibraryAuthorizationStatus MPMediaLibrary::authorizationStatus() {
  return static_cast<MPMediaLibraryAuthorizationStatus>(
      PermissionAuthority::current()->status(PermissionAuthority::Kind::music));
}

void MPMediaLibrary::requestAuthorization(std::function<void(MPMediaLibraryAuthorizationStatus)> handler) {
  PermissionAuthority::current()->request(PermissionAuthority::Kind::music, [handler = std::move(handler)](int s) {
    handler(static_cast<MPMediaLibraryAuthorizationStatus>(s));
  });
}
