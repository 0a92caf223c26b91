#include "app/core/ApplicationMain.h"

#include "app/core/AppData.h"
#include "app/core/AppDelegate.h"
#include "app/storyboard/MainStoryboard.h"
#include "platform/uikit/UIApplication.h"

namespace nimbrel {

void NimbrelApplicationMain() {
  registerMainStoryboard();
  auto delegate = std::make_shared<AppDelegate>();
  UIApplication::sharedApplication().launch(delegate, "Main");
  delegate->window = UIApplication::sharedApplication().keyWindow();
}

}  // namespace nimbrel
