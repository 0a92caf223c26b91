#pragma once

#include <memory>

#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIResponder.h"
#include "platform/uikit/UIWindow.h"

namespace nimbrel {

// The application's delegate: the launch steps, and the app-open ad on a return from the
// background.
class AppDelegate : public UIResponder, public UIApplicationDelegate {
 public:
  std::shared_ptr<UIWindow> window;

  bool applicationDidFinishLaunchingWithOptions(UIApplication& application) override;
  void applicationDidBecomeActive(UIApplication& application) override;
  void applicationDidEnterBackground(UIApplication& application) override;

  // Set by a move to the background, cleared by the next activation. Main thread.
  static bool didEnterBackground();
  static void resetDidEnterBackground();
};

}  // namespace nimbrel
