#include "platform/uikit/UIApplication.h"

#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FatalError.h"
#include "platform/uikit/UIScreen.h"
#include "platform/uikit/UIStoryboard.h"
#include "platform/uikit/UIViewController.h"

UIApplication& UIApplication::sharedApplication() {
  static UIApplication app;
  return app;
}

void UIApplication::launch(std::shared_ptr<UIApplicationDelegate> delegate,
                           std::string_view storyboardName) {
  delegate_ = std::move(delegate);
  window_ = std::make_shared<UIWindow>(UIScreen::mainScreen().bounds());
  auto storyboard = UIStoryboard::storyboardWithName(std::string(storyboardName));
  auto initial = storyboard.instantiateInitialViewController();
  if (!initial) fatalError("the storyboard \"" + std::string(storyboardName) + "\" has no initial screen");
  window_->setRootViewController(initial);
  if (delegate_) delegate_->applicationDidFinishLaunchingWithOptions(*this);
  window_->makeKeyAndVisible();
  state_ = UIApplicationState::active;
  if (delegate_) delegate_->applicationDidBecomeActive(*this);
}

void UIApplication::enterBackground() {
  if (state_ == UIApplicationState::background) return;
  if (delegate_ && state_ == UIApplicationState::active) delegate_->applicationWillResignActive(*this);
  state_ = UIApplicationState::background;
  if (delegate_) delegate_->applicationDidEnterBackground(*this);
}

void UIApplication::becomeActive() {
  if (state_ == UIApplicationState::active) return;
  if (delegate_ && state_ == UIApplicationState::background) {
    delegate_->applicationWillEnterForeground(*this);
  }
  state_ = UIApplicationState::active;
  if (delegate_) delegate_->applicationDidBecomeActive(*this);
}

std::vector<std::shared_ptr<UIWindow>> UIApplication::windows() const {
  if (window_) return {window_};
  return {};
}

void UIApplication::openURL(const URL& url, const std::map<std::string, std::string>& options,
                            std::function<void(bool)> completion) {
  opened_.push_back(url);
  bool ok = opener_ ? opener_(url) : true;
  if (completion) DispatchQueue::main().async([completion, ok] { completion(ok); });
}

bool UIApplication::canOpenURL(const URL& url) const {
  return !url.scheme().empty();
}

void UIApplication::reset() {
  delegate_.reset();
  window_.reset();
  state_ = UIApplicationState::inactive;
  opened_.clear();
  opener_ = nullptr;
}
