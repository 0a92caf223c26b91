#include "platform/uikit/UIWindow.h"

#include <algorithm>
#include <mutex>

#include "platform/foundation/DispatchQueue.h"
#include "platform/uikit/UIViewController.h"

namespace {
std::vector<std::weak_ptr<UIWindow>>& registry() {
  static std::vector<std::weak_ptr<UIWindow>> windows;
  return windows;
}
}  // namespace

UIWindow::~UIWindow() {
  std::erase_if(registry(), [](const auto& w) { return w.expired(); });
}

void UIWindow::setRootViewController(std::shared_ptr<UIViewController> root) {
  auto& reg = registry();
  if (std::none_of(reg.begin(), reg.end(), [this](const auto& w) { return w.lock().get() == this; })) {
    reg.push_back(strongSelf<UIWindow>());
  }
  auto old = std::move(root_);
  root_ = std::move(root);
  if (visible_) {
    if (old) {
      old->beginAppearanceTransition(false, false);
      old->endAppearanceTransition();
    }
    if (root_) {
      root_->beginAppearanceTransition(true, false);
      DispatchQueue::main().async([r = root_] { r->endAppearanceTransition(); });
    }
  }
  didChange();
}

void UIWindow::makeKeyAndVisible() {
  if (visible_) return;
  visible_ = true;
  if (root_) {
    root_->view()->setFrame(bounds());
    root_->beginAppearanceTransition(true, false);
    DispatchQueue::main().async([r = root_] { r->endAppearanceTransition(); });
  }
  didChange();
}

std::vector<std::shared_ptr<UIWindow>> UIWindow::allWindows() {
  std::vector<std::shared_ptr<UIWindow>> out;
  for (const auto& w : registry()) {
    if (auto s = w.lock()) out.push_back(std::move(s));
  }
  return out;
}
