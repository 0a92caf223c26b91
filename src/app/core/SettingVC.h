#pragma once

#include <memory>

#include "app/ads/AppLovinNativeAdManual.h"
#include "platform/libs/MGCollapsingHeaderView.h"
#include "platform/uikit/NSLayoutConstraint.h"
#include "platform/uikit/UIButton.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UIScrollView.h"
#include "platform/uikit/UIViewController.h"

namespace nimbrel {

// The application's outward links: privacy, terms, share, rate; and the way back.
class SettingVC : public UIViewController, public UIScrollViewDelegate, public MGCollapsingHeaderDelegate {
 public:
  static inline constexpr const char* kTypeName = "SettingVC";
  const char* className() const override { return kTypeName; }
  SettingVC();

  std::shared_ptr<UILabel> lblInternalStorage;
  std::shared_ptr<UIScrollView> mainScrollView;
  std::shared_ptr<UIView> nativeAdview;
  std::shared_ptr<NSLayoutConstraint> heightOfNativrAdView;
  std::shared_ptr<UIButton> btnMenu;
  std::shared_ptr<UIView> expandableTitleView;
  std::shared_ptr<UIView> TitleView;
  std::shared_ptr<NSLayoutConstraint> heightOfHeaderViewConstant;
  std::shared_ptr<MGCollapsingHeaderView> HEADERView;
  std::shared_ptr<AppLovinNativeAdManual> appLovinNativeAd = std::make_shared<AppLovinNativeAdManual>();

  void viewDidLoad() override;
  void scrollViewDidScroll(UIScrollView& scrollView) override;
  void headerDidCollapseToOffset(double) override {}
  // The other way round from the home screen, on purpose.
  void headerDidFinishCollapsing() override { TitleView->setHidden(false); }
  void headerDidExpandToOffset(double) override {}
  void headerDidFinishExpanding() override { TitleView->setHidden(true); }

  void onBackBtn(const std::shared_ptr<NSObject>& sender);
  void onPrivacyPolicyBtn(const std::shared_ptr<NSObject>& sender);
  void onClickTermsofUs(const std::shared_ptr<NSObject>& sender);
  void onShareUsBtn(const std::shared_ptr<NSObject>& sender);
  void onRateUsBtn(const std::shared_ptr<NSObject>& sender);

 private:
  // After `delay` on the main queue; never cancelled.
  void openLater(std::string address, double delay);
};

}  // namespace nimbrel
