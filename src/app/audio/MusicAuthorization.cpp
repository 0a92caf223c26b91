#include "app/audio/MusicAuthorization.h"

#include <string>

#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/NSLog.h"
#include "platform/uikit/UIAlertController.h"
#include "platform/uikit/UIApplication.h"

namespace nimbrel {

namespace {

constexpr const char* kUIApplicationOpenSettingsURLString = "app-settings:";

void presentMusicRefusal(UIViewController& screen) {
  auto alert = std::make_shared<UIAlertController>(
      "Can not access Music Library!",
      "You have not given permission for access Music. \nGoto settings and give permission to access Music.",
      UIAlertControllerStyle::alert);
  alert->addAction({"Cancel", UIAlertActionStyle::defaultStyle, nullptr});
  alert->addAction({"Setting", UIAlertActionStyle::defaultStyle, [](const UIAlertAction&) {
                      if (auto url = URL::withString(kUIApplicationOpenSettingsURLString)) {
                        UIApplication::sharedApplication().openURL(*url, {}, nullptr);
                      }
                    }});
  screen.presentViewController(alert, true, nullptr);
}

}  // namespace

void handleMusicAuthorization(MPMediaLibraryAuthorizationStatus status, std::function<void()> onAuthorised,
                              std::weak_ptr<UIViewController> screen) {
  NSLog("\n\n\n\n\n" + std::to_string(static_cast<int>(status)) + "\n\n");
  switch (status) {
    case MPMediaLibraryAuthorizationStatus::denied:
    case MPMediaLibraryAuthorizationStatus::restricted:
      DispatchQueue::main().async([screen = std::move(screen)] {
        if (auto s = screen.lock()) presentMusicRefusal(*s);
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
