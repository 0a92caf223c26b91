#pragma once

#include <memory>

#include "platform/uikit/NSLayoutConstraint.h"
#include "platform/uikit/UIButton.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UIScrollView.h"
#include "platform/uikit/UIViewController.h"

namespace nimbrel {

// The root of the user's work: storage line, recent strip, the buttons to the browse screens.
class HomeViewController : public UIViewController {
 public:
  static inline constexpr const char* kTypeName = "HomeViewController";
  const char* className() const override { return kTypeName; }

  std::shared_ptr<UILabel> lblInternalStorage;
  std::shared_ptr<UIScrollView> mainScrollView;
  std::shared_ptr<NSLayoutConstraint> heightOfMainStackView;
  std::shared_ptr<NSLayoutConstraint> heightOfRecentFilesView;
  std::shared_ptr<UIView> nativeAdview;
  std::shared_ptr<UIView> recentFilesView;
  std::shared_ptr<NSLayoutConstraint> heightOfNativrAdView;
  std::shared_ptr<UIButton> btnMenu;
  std::shared_ptr<UIView> expandableTitleView;
  std::shared_ptr<UIView> TitleView;
  std::shared_ptr<NSLayoutConstraint> heightOfHeaderViewConstant;
  std::shared_ptr<UIView> HEADERView;
  bool isShowNativeAds = false;
  bool isFirstTime = false;
};

}  // namespace nimbrel
