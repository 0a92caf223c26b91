#include "app/VC/SettingsRefusalAlert.h"

#include "platform/uikit/UIAlertController.h"
#include "platform/uikit/UIApplication.h"

namespace nimbrel {

namespace {
constexpr const char* kUIApplicationOpenSettingsURLString = "app-settings:";
}

void presentSettingsRefusalAlert(UIViewController& screen, const std::string& title, const std::string& message) {
  auto alert = std::make_shared<UIAlertController>(title, message, UIAlertControllerStyle::alert);
  alert->addAction({"Cancel", UIAlertActionStyle::defaultStyle, nullptr});
  alert->addAction({"Setting", UIAlertActionStyle::defaultStyle, [](const UIAlertAction&) {
                      if (auto url = URL::withString(kUIApplicationOpenSettingsURLString)) {
                        UIApplication::sharedApplication().openURL(*url, {}, nullptr);
                      }
                    }});
  screen.presentViewController(alert, true, nullptr);
}

}  // namespace nimbrel
