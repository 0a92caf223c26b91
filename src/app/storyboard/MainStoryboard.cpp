#include "app/storyboard/MainStoryboard.h"

#include "app/kit/AppThemeColor.h"
#include "app/storyboard/AudioScene.h"
#include "app/storyboard/CellNibs.h"
#include "app/storyboard/DocumentsScene.h"
#include "app/storyboard/HomeScene.h"
#include "app/storyboard/ImagesScene.h"
#include "app/storyboard/InfoScenes.h"
#include "app/storyboard/StorageAnalysisScene.h"
#include "app/storyboard/NativeAdNib.h"
#include "app/storyboard/SplashScene.h"
#include "platform/uikit/UIColorCatalog.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UIStoryboard.h"

namespace nimbrel {

void registerMainStoryboard() {
  // The asset catalogue's colours.
  UIColorCatalog::registerColor("AppColor", AppThemeColor().AppTheme());
  UIStoryboard::registerScene("Main", "SplashVC", makeSplashScene);
  UIStoryboard::registerScene("Main", "HomeViewController", makeHomeScene);
  UIStoryboard::registerScene("Main", "ImagesVC", makeImagesScene);
  UIStoryboard::registerScene("Main", "AudioVC", makeAudioScene);
  UIStoryboard::registerScene("Main", "MusicPlayerVC", makeMusicPlayerScene);
  UIStoryboard::registerScene("Main", "DocumentsVC", makeDocumentsScene);
  UIStoryboard::registerScene("Main", "StorageAnalysisVC", makeStorageAnalysisScene);
  UIStoryboard::registerScene("Main", "SettingVC", makeSettingScene);
  UIStoryboard::registerScene("Main", "InfoVC", makeInfoScene);
  UIStoryboard::registerScene("Main", "PhotosInfoVC", makePhotosInfoScene);
  // The screens draw their own headers, so the navigation bar is hidden from the start.
  UIStoryboard::setInitialScene("Main", [] {
    auto splash = UIStoryboard::storyboardWithName("Main").instantiateViewControllerWithIdentifier("SplashVC");
    auto nav = UINavigationController::withRoot(splash);
    nav->setNavigationBarHidden(true, false);
    return std::static_pointer_cast<UIViewController>(nav);
  });
  registerNativeAdNib();
  registerCellNibs();
}

}  // namespace nimbrel
