#include "app/core/SettingVC.h"

#include "app/core/Constant.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/uikit/UIActivityViewController.h"
#include "platform/uikit/UIApplication.h"

namespace nimbrel {

SettingVC::SettingVC() {
  registerAction("onBackBtn:", [this](const std::shared_ptr<NSObject>& s) { onBackBtn(s); });
  registerAction("onPrivacyPolicyBtn:", [this](const std::shared_ptr<NSObject>& s) { onPrivacyPolicyBtn(s); });
  registerAction("onClickTermsofUs:", [this](const std::shared_ptr<NSObject>& s) { onClickTermsofUs(s); });
  registerAction("onShareUsBtn:", [this](const std::shared_ptr<NSObject>& s) { onShareUsBtn(s); });
  registerAction("onRateUsBtn:", [this](const std::shared_ptr<NSObject>& s) { onRateUsBtn(s); });
}

void SettingVC::viewDidLoad() {
  UIViewController::viewDidLoad();
  auto self = strongSelf<SettingVC>();
  mainScrollView->setDelegate(std::shared_ptr<UIScrollViewDelegate>(self));
  HEADERView->setDelegate(std::shared_ptr<MGCollapsingHeaderDelegate>(self));
  HEADERView->setAlwaysCollapse(true);
  HEADERView->setMinimumHeaderHeight(50.0);
  HEADERView->setCollapsingConstraint(heightOfHeaderViewConstant);
  heightOfHeaderViewConstant->setConstant(44.0);
  view()->layoutIfNeeded();
  loadScreenNativeAd(appLovinNativeAd, weakSelf<NSObject>(), nativeAdview);
}

void SettingVC::scrollViewDidScroll(UIScrollView&) {
  HEADERView->collapseWithScroll(*mainScrollView);
}

void SettingVC::onBackBtn(const std::shared_ptr<NSObject>&) {
  dismissViewControllerAnimated(true, nullptr);
}

void SettingVC::openLater(std::string address, double delay) {
  DispatchQueue::main().asyncAfter(delay, [address = std::move(address)] {
    auto url = URL::withString(address);
    if (!url) return;
    UIApplication::sharedApplication().openURL(*url, {}, nullptr);
  });
}

void SettingVC::onPrivacyPolicyBtn(const std::shared_ptr<NSObject>&) { openLater(Constant::privacyUrl(), 0.1); }
void SettingVC::onClickTermsofUs(const std::shared_ptr<NSObject>&) { openLater(Constant::termsUrl(), 0.1); }
void SettingVC::onRateUsBtn(const std::shared_ptr<NSObject>&) { openLater(Constant::rateUrl(), 0.1); }

void SettingVC::onShareUsBtn(const std::shared_ptr<NSObject>& sender) {
  auto self = strongSelf<SettingVC>();
  DispatchQueue::main().asyncAfter(0.3, [self, sender] {
    auto sheet = std::make_shared<UIActivityViewController>(std::vector<UIActivityViewController::Item>{Constant::shareUrl()});
    if (auto popover = sheet->popoverPresentationController()) {
      popover->sourceView = std::dynamic_pointer_cast<UIView>(sender);
    }
    self->presentViewController(sheet, true, nullptr);
  });
}

}  // namespace nimbrel
