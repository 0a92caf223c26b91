#include "app/audio/MusicAuthorization.h"

#include <string>

#include "app/VC/SettingsRefusalAlert.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/NSLog.h"

namespace nimbrel {

void handleMusicAuthorization(MPMediaLibraryAuthorizationStatus status, std::function<void()> onAuthorised,
                              std::weak_ptr<UIViewController> screen) {
  NSLog("\n\n\n\n\n" + std::to_string(static_cast<int>(status)) + "\n\n");
  switch (status) {
    case MPMediaLibraryAuthorizationStatus::denied:
    case MPMediaLibraryAuthorizationStatus::restricted:
      DispatchQueue::main().async([screen = std::move(screen)] {
        if (auto s = screen.lock()) {
          presentSettingsRefusalAlert(
              *s, "Can not access Music Library!",
              "You have not given permission for access Music. \nGoto settings and give permission to access Music.");
        }
      });
      break;
    case MPMediaLibraryAuthorizationStatus::authorized:
      DispatchQueue::main().async([onAuthorised = std::move(onAuthorised)] {
        if (onAuthorised) onAuthorised();
      });
      break;
    default:
      break;
  }
}

void requestMusicAccess(std::weak_ptr<UIViewController> screen, std::function<void()> onAuthorised) {
  MPMediaLibrary::requestAuthorization(
      [screen = std::move(screen), onAuthorised = std::move(onAuthorised)](MPMediaLibraryAuthorizationStatus status) {
        handleMusicAuthorization(status, onAuthorised, screen);
      });
}

}  // namespace nimbrel
