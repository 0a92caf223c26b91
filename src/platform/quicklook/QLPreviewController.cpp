#include "platform/quicklook/QLPreviewController.h"

#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UINavigationController.h"

QLPreviewController::QLPreviewController() {
  registerAction("backButtonPressed:", [this](const std::shared_ptr<NSObject>&) { goBack(); });
}

void QLPreviewController::loadView() {
  UIViewController::loadView();
  backButton_ = std::make_shared<UIButton>(CGRectMake(8, 2, 40, 40));
  backButton_->setTitle(std::string("Back"));
  backButton_->setImage(UIImage::named("ic_back"));
  backButton_->addTarget(weakSelf<UIViewController>(), "backButtonPressed:", UIControlEvents::touchUpInside);
  view()->addSubview(backButton_);
  registerOutlet("backButton", backButton_);
}

std::shared_ptr<UIButton> QLPreviewController::backButton() {
  loadViewIfNeeded();
  return backButton_;
}

std::optional<URL> QLPreviewController::currentPreviewItem() {
  auto source = dataSource.lock();
  if (!source) return std::nullopt;
  long count = source->numberOfPreviewItemsInPreviewController(*this);
  if (currentPreviewItemIndex() >= count) return std::nullopt;
  return source->previewControllerPreviewItemAtIndex(*this, currentPreviewItemIndex());
}

bool QLPreviewController::openLink(const URL& url) {
  auto item = currentPreviewItem();
  if (!item) return false;
  if (auto d = delegate.lock(); d && !d->previewControllerShouldOpenURLForPreviewItem(*this, url, *item)) return false;
  UIApplication::sharedApplication().openURL(url, {}, nullptr);
  return true;
}

void QLPreviewController::goBack() {
  auto keep = strongSelf<QLPreviewController>();
  if (auto d = delegate.lock()) d->previewControllerWillDismiss(*this);
  auto nav = navigationController();
  if (nav && nav->topViewController() == keep) {
    nav->popViewControllerAnimated(true);
  } else if (presentingViewController()) {
    dismissViewControllerAnimated(true, nullptr);
  }
}
