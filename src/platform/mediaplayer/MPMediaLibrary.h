#pragma once

#include <functional>

enum class MPMediaLibraryAuthorizationStatus : int { notDetermined = 0, denied = 1, restricted = 2, authorized = 3 };

// The music library's permission.
class MPMediaLibrary {
 public:
  static MPMediaLibraryAuthorizationStatus authorizationStatus();
  // The handler runs on a background queue.
  static void requestAuthorization(std::function<void(MPMediaLibraryAuthorizationStatus)> handler);
};
