#include "platform/uikit/UIViewController.h"

#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/NSLog.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UIScreen.h"
#include "platform/uikit/UIWindow.h"

bool modalStyleCoversPresenter(UIModalPresentationStyle style) {
  return style == UIModalPresentationStyle::fullScreen ||
         style == UIModalPresentationStyle::currentContext;
}

UIViewController::UIViewController() = default;
UIViewController::~UIViewController() = default;

std::shared_ptr<UIView> UIViewController::view() {
  loadViewIfNeeded();
  return view_;
}

void UIViewController::loadViewIfNeeded() {
  if (view_) return;
  loadView();
  if (!view_) view_ = std::make_shared<UIView>(UIScreen::mainScreen().bounds());
  viewDidLoad();
}

void UIViewController::loadView() {
  view_ = std::make_shared<UIView>(UIScreen::mainScreen().bounds());
  if (sceneLoader_) sceneLoader_(*this);
}

void UIViewController::registerOutlet(std::string name, std::shared_ptr<NSObject> object) {
  for (auto& [n, o] : outlets_) {
    if (n == name) {
      o = std::move(object);
      return;
    }
  }
  outlets_.emplace_back(std::move(name), std::move(object));
}

std::shared_ptr<NSObject> UIViewController::outlet(std::string_view name) const {
  for (const auto& [n, o] : outlets_) {
    if (n == name) return o;
  }
  return nullptr;
}

void UIViewController::registerAction(std::string selector, Action action) {
  actions_[std::move(selector)] = std::move(action);
}

bool UIViewController::performAction(std::string_view selector,
                                     const std::shared_ptr<NSObject>& sender) {
  auto it = actions_.find(selector);
  if (it == actions_.end()) return false;
  auto keepAlive = shared_from_this();
  auto action = it->second;  // the action may replace the table
  action(sender);
  return true;
}

bool UIViewController::respondsToSelector(std::string_view selector) const {
  return actions_.find(selector) != actions_.end();
}

std::vector<std::string> UIViewController::actionSelectors() const {
  std::vector<std::string> out;
  for (const auto& [s, a] : actions_) out.push_back(s);
  return out;
}

std::shared_ptr<UINavigationController> UIViewController::navigationController() const {
  for (auto p = parent_.lock(); p; p = p->parent_.lock()) {
    if (auto nav = std::dynamic_pointer_cast<UINavigationController>(p)) return nav;
  }
  return nullptr;
}

std::shared_ptr<UIViewController> UIViewController::rootAncestor() {
  auto node = strongSelf<UIViewController>();
  while (auto p = node->parent_.lock()) node = p;
  return node;
}

bool UIViewController::isInWindowHierarchy() {
  // A screen under the top of a navigation stack has its view taken out of the window.
  auto node = strongSelf<UIViewController>();
  while (auto p = node->parent_.lock()) {
    if (auto nav = std::dynamic_pointer_cast<UINavigationController>(p);
        nav && nav->topViewController() != node) {
      return false;
    }
    node = p;
  }
  auto root = node;
  for (const auto& window : UIWindow::allWindows()) {
    if (window->rootViewController() == root) return true;
  }
  if (auto presenter = root->presenting_.lock()) return presenter->isInWindowHierarchy();
  return false;
}

bool UIViewController::isBeingPresentedOrShown() const {
  return appearance_ == Appearance::appearing || appearance_ == Appearance::appeared;
}

void UIViewController::presentViewController(const std::shared_ptr<UIViewController>& controller,
                                             bool animated, std::function<void()> completion) {
  if (!controller) return;
  auto host = rootAncestor();
  // The platform raises here; a state object refuses and says why.
  if (controller->presenting_.lock() || controller->parent_.lock() || controller == host) {
    NSLog("Application tried to present modally a view controller " +
          std::string(controller->className()) + " that is already being presented or shown.");
    return;
  }
  if (host->presented_) {
    NSLog("Attempt to present " + std::string(controller->className()) + " on " +
          host->className() + " which is already presenting " + host->presented_->className());
    return;
  }
  if (!isInWindowHierarchy()) {
    NSLog("Attempt to present " + std::string(controller->className()) + " on " +
          host->className() + " whose view is not in the window hierarchy.");
    return;
  }
  host->presented_ = controller;
  controller->presenting_ = host;
  controller->loadViewIfNeeded();
  bool covers = modalStyleCoversPresenter(controller->modalStyle_);
  if (covers) host->beginAppearanceTransition(false, animated);
  controller->beginAppearanceTransition(true, animated);
  host->notifyChanged();
  DispatchQueue::main().async([host, controller, covers, completion = std::move(completion)] {
    controller->endAppearanceTransition();
    if (covers) host->endAppearanceTransition();
    if (completion) completion();
  });
}

void UIViewController::dismissViewControllerAnimated(bool animated,
                                                     std::function<void()> completion) {
  // Dismissing a presenter dismisses what it presents; a presented controller asks its presenter.
  std::shared_ptr<UIViewController> presenter;
  auto root = rootAncestor();
  if (root->presented_) {
    presenter = root;
  } else if (auto p = root->presenting_.lock()) {
    presenter = p;
  } else {
    return;
  }
  auto dismissed = presenter->presented_;
  // Every screen of the chain above the presenter goes, the topmost first.
  std::vector<std::shared_ptr<UIViewController>> leaving;
  for (auto c = dismissed; c; c = c->presented_) leaving.insert(leaving.begin(), c);
  for (const auto& c : leaving) {
    c->presented_.reset();
    c->presenting_.reset();
  }
  presenter->presented_.reset();
  bool covers = modalStyleCoversPresenter(dismissed->modalStyle_);
  // Screens that are already off screen (covered by the one above) ignore the call.
  for (const auto& c : leaving) c->beginAppearanceTransition(false, animated);
  if (covers) presenter->beginAppearanceTransition(true, animated);
  presenter->notifyChanged();
  DispatchQueue::main().async(
      [presenter, leaving = std::move(leaving), covers, completion = std::move(completion)] {
        for (const auto& c : leaving) c->endAppearanceTransition();
        if (covers) presenter->endAppearanceTransition();
        if (completion) completion();
      });
}

void UIViewController::beginAppearanceTransition(bool appearing, bool animated) {
  animatedTransition_ = animated;
  if (appearing) {
    if (appearance_ == Appearance::appeared || appearance_ == Appearance::appearing) return;
    loadViewIfNeeded();
    appearance_ = Appearance::appearing;
    viewWillAppear(animated);
  } else {
    if (appearance_ == Appearance::disappeared || appearance_ == Appearance::disappearing) return;
    appearance_ = Appearance::disappearing;
    viewWillDisappear(animated);
  }
  for (const auto& child : childrenForAppearance()) child->beginAppearanceTransition(appearing, animated);
}

void UIViewController::endAppearanceTransition() {
  if (appearance_ == Appearance::appearing) {
    appearance_ = Appearance::appeared;
    viewDidAppear(animatedTransition_);
  } else if (appearance_ == Appearance::disappearing) {
    appearance_ = Appearance::disappeared;
    viewDidDisappear(animatedTransition_);
  } else {
    return;
  }
  for (const auto& child : childrenForAppearance()) child->endAppearanceTransition();
}
