#include "app/storyboard/SplashScene.h"

#include "app/core/SplashVC.h"
#include "app/storyboard/SceneBuilder.h"
#include "platform/uikit/UIScreen.h"

namespace nimbrel {

std::shared_ptr<UIViewController> makeSplashScene() {
  auto controller = std::make_shared<SplashVC>();
  controller->setSceneLoader([](UIViewController& vc) {
    auto& splash = static_cast<SplashVC&>(vc);
    SceneBuilder scene(vc);
    auto root = scene.root();
    root->setBackgroundColor(UIColor::whiteColor());
    CGRect bounds = UIScreen::mainScreen().bounds();
    double side = bounds.width() * 0.6;
    splash.viewOfAnimation = scene.outlet<LottieAnimationView>(
        "viewOfAnimation", root,
        CGRectMake((bounds.width() - side) / 2, (bounds.height() - side) / 2, side, side));
    splash.viewOfAnimation->setAnimationName("splash");
  });
  return controller;
}

}  // namespace nimbrel
