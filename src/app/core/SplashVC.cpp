#include "app/core/SplashVC.h"

#include "app/ads/AppLovinInterstitialsAd.h"
#include "app/core/Constant.h"
#include "app/core/HomeViewController.h"
#include "app/VC/UIViewControllerExtension.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/uikit/UINavigationController.h"

namespace nimbrel {

void SplashVC::viewDidLoad() {
  UIViewController::viewDidLoad();
  if (viewOfAnimation) {
    viewOfAnimation->setContentMode(UIViewContentMode::center);
    viewOfAnimation->setLoopMode(LottieLoopMode::loop);
    viewOfAnimation->setAnimationSpeed(0.6);
    viewOfAnimation->play();
  }
  std::weak_ptr<SplashVC> weak = strongSelf<SplashVC>();
  DispatchQueue::main().asyncAfter(3.0, [weak] {
    auto self = weak.lock();
    if (!self) return;
    auto& defaults = Constant::userDefaults();
    if (!defaults.boolForKey("isFirstTime")) {
      defaults.setBool(true, "isFirstTime");
      DispatchQueue::main().async([weak] {
        if (auto s = weak.lock()) s->goOn();
      });
    } else {
      self->goOn();
    }
  });
}

void SplashVC::goOn() {
  std::weak_ptr<SplashVC> weak = strongSelf<SplashVC>();
  AppLovinInterstitialsAd::shared()->offerThenContinue(true, false, 0, 0, "splash", [weak] {
    auto self = weak.lock();
    if (!self) return;
    auto home = instantiate<HomeViewController>(AppStoryboard::Main);
    if (auto nav = self->navigationController()) nav->pushViewController(home, true);
  });
}

}  // namespace nimbrel
