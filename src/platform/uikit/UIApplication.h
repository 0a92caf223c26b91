#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/URL.h"
#include "platform/uikit/UIWindow.h"

class UIApplication;

class UIApplicationDelegate {
 public:
  virtual ~UIApplicationDelegate() = default;
  virtual bool applicationDidFinishLaunchingWithOptions(UIApplication& application) { return true; }
  virtual void applicationDidBecomeActive(UIApplication& application) {}
  virtual void applicationWillResignActive(UIApplication& application) {}
  virtual void applicationDidEnterBackground(UIApplication& application) {}
  virtual void applicationWillEnterForeground(UIApplication& application) {}
};

// The URL that opens the application's page of the system settings.
inline constexpr const char* UIApplicationOpenSettingsURLString = "app-settings:";

enum class UIApplicationState { active = 0, inactive = 1, background = 2 };

// The running application: its launch as the platform performs it, its active and background
// moments, its windows, and the URLs handed to the system to open.
class UIApplication {
 public:
  // Hands a URL to the desktop or the simulated system; answers whether it could be opened.
  using URLOpener = std::function<bool(const URL&)>;

  static UIApplication& sharedApplication();

  // Makes the window, puts the storyboard's initial screen in it, runs the launch callback, shows
  // the window and makes the application active: the platform's order.
  void launch(std::shared_ptr<UIApplicationDelegate> delegate, std::string_view storyboardName);
  void enterBackground();
  void becomeActive();
  UIApplicationState applicationState() const { return state_; }

  std::shared_ptr<UIApplicationDelegate> delegate() const { return delegate_; }
  std::vector<std::shared_ptr<UIWindow>> windows() const;
  std::shared_ptr<UIWindow> keyWindow() const { return window_; }

  void openURL(const URL& url, const std::map<std::string, std::string>& options,
               std::function<void(bool)> completion);
  bool canOpenURL(const URL& url) const;
  const std::vector<URL>& openedURLs() const { return opened_; }
  void setURLOpener(URLOpener opener) { opener_ = std::move(opener); }

  // Forgets the running application (tests start each case from scratch).
  void reset();

 private:
  std::shared_ptr<UIApplicationDelegate> delegate_;
  std::shared_ptr<UIWindow> window_;
  UIApplicationState state_ = UIApplicationState::inactive;
  std::vector<URL> opened_;
  URLOpener opener_;
};
