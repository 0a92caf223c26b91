#pragma once

#include <memory>

#include "platform/libs/LottieAnimationView.h"
#include "platform/uikit/UIViewController.h"

namespace nimbrel {

// Stands for 3.0 s with its animation, offers the interstitial, and 2.0 s later pushes home.
class SplashVC : public UIViewController {
 public:
  static inline constexpr const char* kTypeName = "SplashVC";
  const char* className() const override { return kTypeName; }

  std::shared_ptr<LottieAnimationView> viewOfAnimation;

  void viewDidLoad() override;

 private:
  void goOn();
};

}  // namespace nimbrel
