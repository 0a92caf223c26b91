#include "shell/ScreenObject.h"

#include "app/audio/MusicPlayerVC.h"
#include "automation/TreeWriter.h"
#include "platform/av/AVPlayerViewController.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UIViewController.h"

namespace nimbrel::shell {

ScreenObject::ScreenObject(std::shared_ptr<UIViewController> controller, QObject* parent)
    : QObject(parent), controller_(std::move(controller)),
      id_(QString::fromStdString(TreeWriter::screenId(*controller_))) {
  watch();
  refreshChrome();
}

ScreenObject::~ScreenObject() {
  unwatch();
}

void ScreenObject::watch() {
  auto observe = [this](ChangeSignal& signal) {
    tokens_.emplace_back(&signal, signal.observe([this] { refreshChrome(); }));
  };
  observe(controller_->changed());
  observe(controller_->navigationItem().changed());
  if (auto nav = controller_->navigationController()) {
    watchedNav_ = nav;
    observe(nav->changed());
  }
}

void ScreenObject::unwatch() {
  // A stack that is gone took its signal with it.
  auto nav = watchedNav_.lock();
  for (auto& [signal, token] : tokens_) {
    if (!nav && signal != &controller_->changed() && signal != &controller_->navigationItem().changed()) continue;
    signal->unobserve(token);
  }
  tokens_.clear();
}

ViewObject* ScreenObject::wrap(QPointer<ViewObject>& slot, const std::shared_ptr<NSObject>& object) {
  if (!object) {
    if (slot) slot->deleteLater();
    slot = nullptr;
    return nullptr;
  }
  if (slot && slot->object() == object) return slot;
  if (slot) slot->deleteLater();
  slot = new ViewObject(object, this);
  return slot;
}

void ScreenObject::refreshChrome() {
  auto nav = controller_->navigationController();
  if (nav != watchedNav_.lock()) {
    unwatch();
    watch();
  }
  bool changed = false;
  auto set = [&changed](auto& field, auto value) {
    if (field == value) return;
    field = value;
    changed = true;
  };
  set(navigationBarHidden_, !nav || nav->isNavigationBarHidden());
  set(statusBarHidden_, controller_->prefersStatusBarHidden());
  set(canGoBack_, nav && nav->viewControllers().size() > 1 && nav->viewControllers().front() != controller_);
  ViewObject* before[] = {titleView_, rightBarButton_, rootView_};
  wrap(titleView_, controller_->navigationItem().titleView());
  wrap(rightBarButton_, controller_->navigationItem().rightBarButtonItem());
  // The screen's own view, once loaded (asking never loads it).
  wrap(rootView_, controller_->isViewLoaded() ? controller_->view() : nullptr);
  if (before[0] != titleView_ || before[1] != rightBarButton_ || before[2] != rootView_) changed = true;
  std::shared_ptr<AVPlayer> current = screenPlayer();
  if (current != (player_ ? player_->player() : nullptr)) {
    if (player_) player_->deleteLater();
    player_ = current ? new PlayerObject(current, this) : nullptr;
    changed = true;
  }
  if (changed) Q_EMIT chromeChanged();
}

std::shared_ptr<AVPlayer> ScreenObject::screenPlayer() const {
  if (auto system = std::dynamic_pointer_cast<AVPlayerViewController>(controller_)) return system->player;
  // The music player makes its player as its view loads.
  if (auto music = std::dynamic_pointer_cast<MusicPlayerVC>(controller_); music && music->isViewLoaded()) return music->player;
  return nullptr;
}

bool ScreenObject::goBack() {
  auto nav = controller_->navigationController();
  if (!nav || nav->isNavigationBarHidden() || nav->topViewController() != controller_ ||
      nav->viewControllers().size() < 2) {
    return false;
  }
  nav->popViewControllerAnimated(true);
  return true;
}

bool ScreenObject::dismiss() {
  if (!controller_->presentingViewController()) return false;
  controller_->dismissViewControllerAnimated(true, nullptr);
  return true;
}

void ScreenObject::didLayOut() {
  if (controller_->isViewLoaded()) controller_->viewDidLayoutSubviews();
}

bool ScreenObject::loaded() const {
  return controller_->isViewLoaded();
}

QStringList ScreenObject::outletNames() const {
  QStringList names;
  if (!controller_->isViewLoaded()) return names;
  for (const auto& [name, object] : controller_->outlets()) names.push_back(QString::fromStdString(name));
  return names;
}

ViewObject* ScreenObject::outlet(const QString& name) {
  // Outlets exist once the scene is loaded; asking never loads it.
  std::shared_ptr<NSObject> object =
      controller_->isViewLoaded() ? controller_->outlet(name.toStdString()) : nullptr;
  if (!object) {
    if (!missing_) missing_ = new ViewObject(nullptr, this);
    return missing_;
  }
  auto it = outlets_.find(name);
  if (it != outlets_.end() && it.value() && it.value()->object() == object) return it.value();
  if (it != outlets_.end() && it.value()) it.value()->deleteLater();
  auto* view = new ViewObject(object, this);
  outlets_.insert(name, view);
  return view;
}

bool ScreenObject::responds(const QString& selector) const {
  return controller_->respondsToSelector(selector.toStdString());
}

bool ScreenObject::send(const QString& selector, const QString& sender) {
  std::string s = selector.toStdString();
  if (!controller_->respondsToSelector(s)) return false;
  std::shared_ptr<NSObject> from = sender.isEmpty() ? nullptr : controller_->outlet(sender.toStdString());
  return controller_->performAction(s, from);
}

void ScreenObject::setPlace(const QString& presentation, int style, bool leaving) {
  refreshChrome();
  if (presentation == presentation_ && style == style_ && leaving == leaving_) return;
  presentation_ = presentation;
  style_ = style;
  leaving_ = leaving;
  Q_EMIT placeChanged();
}

}  // namespace nimbrel::shell
