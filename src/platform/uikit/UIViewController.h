#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/foundation/ChangeSignal.h"
#include "platform/uikit/UINavigationItem.h"
#include "platform/uikit/UIResponder.h"
#include "platform/uikit/UIView.h"

class UINavigationController;

enum class UIModalPresentationStyle : int {
  automatic = -2, none = -1, fullScreen = 0, pageSheet = 1, formSheet = 2, currentContext = 3,
  custom = 4, overFullScreen = 5, overCurrentContext = 6, popover = 7
};

// A screen's controller: its view (loaded once, on first need, from its scene), its life-cycle
// calls at the moments the platform makes them, containment, modal presentation, and the scene's
// outlets and actions by name. Transitions complete one main-queue turn after they begin: the
// will-callbacks run inside the push, present, pop or dismiss, the did-callbacks one turn later.
class UIViewController : public UIResponder {
 public:
  using Action = std::function<void(const std::shared_ptr<NSObject>& sender)>;
  using SceneLoader = std::function<void(UIViewController&)>;
  enum class Appearance { disappeared, appearing, appeared, disappearing };

  UIViewController();
  ~UIViewController() override;
  virtual const char* className() const { return "UIViewController"; }

  // View.
  std::shared_ptr<UIView> view();
  bool isViewLoaded() const { return view_ != nullptr; }
  void loadViewIfNeeded();
  void setSceneLoader(SceneLoader loader) { sceneLoader_ = std::move(loader); }

  // Life cycle, for subclasses. The base versions do nothing.
  virtual void viewDidLoad() {}
  virtual void viewWillAppear(bool animated) {}
  virtual void viewDidAppear(bool animated) {}
  virtual void viewWillDisappear(bool animated) {}
  virtual void viewDidDisappear(bool animated) {}
  virtual void viewDidLayoutSubviews() {}

  // What the navigation bar shows for this screen.
  UINavigationItem& navigationItem() { return navigationItem_; }
  virtual bool prefersStatusBarHidden() const { return false; }
  void setNeedsStatusBarAppearanceUpdate() {
    ++statusBarUpdates_;
    changed_.emit();
  }
  int statusBarUpdateCount() const { return statusBarUpdates_; }

  // Identity in the storyboard.
  const std::string& storyboardIdentifier() const { return storyboardIdentifier_; }
  void setStoryboardIdentifier(std::string id) { storyboardIdentifier_ = std::move(id); }
  const std::string& title() const { return title_; }
  void setTitle(std::string title) { title_ = std::move(title); }

  // Outlets in the order the scene made them.
  void registerOutlet(std::string name, std::shared_ptr<NSObject> object);
  const std::vector<std::pair<std::string, std::shared_ptr<NSObject>>>& outlets() const {
    return outlets_;
  }
  std::shared_ptr<NSObject> outlet(std::string_view name) const;

  // Actions by selector ("onBackBtn:").
  void registerAction(std::string selector, Action action);
  bool performAction(std::string_view selector, const std::shared_ptr<NSObject>& sender) override;
  bool respondsToSelector(std::string_view selector) const override;
  std::vector<std::string> actionSelectors() const;

  // Containment.
  std::shared_ptr<UIViewController> parentViewController() const { return parent_.lock(); }
  std::shared_ptr<UINavigationController> navigationController() const;
  // The outermost container this controller sits in (itself when it has no parent).
  std::shared_ptr<UIViewController> rootAncestor();

  // Modal presentation.
  UIModalPresentationStyle modalPresentationStyle() const { return modalStyle_; }
  void setModalPresentationStyle(UIModalPresentationStyle style) { modalStyle_ = style; }
  void presentViewController(const std::shared_ptr<UIViewController>& controller, bool animated,
                             std::function<void()> completion);
  void dismissViewControllerAnimated(bool animated, std::function<void()> completion);
  std::shared_ptr<UIViewController> presentedViewController() const { return presented_; }
  std::shared_ptr<UIViewController> presentingViewController() const { return presenting_.lock(); }
  bool isBeingPresentedOrShown() const;
  // Whether this controller's view is part of what a window shows (possibly covered by a modal
  // screen); a screen under the top of a navigation stack is not.
  bool isInWindowHierarchy();

  // Appearance, driven by containers, presentation and the window.
  Appearance appearance() const { return appearance_; }
  void beginAppearanceTransition(bool appearing, bool animated);
  void endAppearanceTransition();

  ChangeSignal& changed() { return changed_; }

 protected:
  virtual void loadView();
  // The children whose appearance follows this controller's.
  virtual std::vector<std::shared_ptr<UIViewController>> childrenForAppearance() const { return {}; }
  void setParent(const std::shared_ptr<UIViewController>& parent) { parent_ = parent; }
  void setView(std::shared_ptr<UIView> view) { view_ = std::move(view); }
  void notifyChanged() { changed_.emit(); }
  friend class UINavigationController;
  friend class UIWindow;

 private:
  std::shared_ptr<UIView> view_;
  SceneLoader sceneLoader_;
  std::string storyboardIdentifier_;
  std::string title_;
  std::vector<std::pair<std::string, std::shared_ptr<NSObject>>> outlets_;
  std::map<std::string, Action, std::less<>> actions_;
  std::weak_ptr<UIViewController> parent_;
  std::shared_ptr<UIViewController> presented_;
  std::weak_ptr<UIViewController> presenting_;
  UIModalPresentationStyle modalStyle_ = UIModalPresentationStyle::automatic;
  Appearance appearance_ = Appearance::disappeared;
  bool animatedTransition_ = false;
  UINavigationItem navigationItem_;
  int statusBarUpdates_ = 0;
  ChangeSignal changed_;
};

// Whether presenting with this style takes the presenter off the screen.
bool modalStyleCoversPresenter(UIModalPresentationStyle style);
