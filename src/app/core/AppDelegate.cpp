#include "app/core/AppDelegate.h"

#include "app/ads/AdsManager.h"
#include "app/ads/AppLovinAdId.h"
#include "app/ads/AppLovinAppOpenAd.h"
#include "app/ads/AppLovinInterstitialsAd.h"
#include "app/ads/AppLovinNativeAdManual.h"
#include "app/core/BasicMethod.h"
#include "app/core/Constant.h"
#include "app/documents/customFileManager.h"
#include "platform/ads/ALSdk.h"
#include "platform/foundation/SharedInstance.h"
#include "platform/ads/GADMobileAds.h"
#include "platform/libs/SVProgressHUD.h"
#include "platform/services/ATTrackingManager.h"
#include "platform/services/FIRApp.h"
#include "platform/uikit/UIDevice.h"

namespace nimbrel {

namespace {
struct BackgroundFlag {
  bool didEnterBackground = false;
};
bool& flag() { return SharedInstance<BackgroundFlag>::get()->didEnterBackground; }
}  // namespace

bool AppDelegate::didEnterBackground() { return flag(); }
void AppDelegate::resetDidEnterBackground() { flag() = false; }

bool AppDelegate::applicationDidFinishLaunchingWithOptions(UIApplication&) {
  // 1. The tracking prompt; its answer is never used.
  if (UIDevice::currentDevice().isOperatingSystemAtLeastVersion(14, 0, 0)) {
    ATTrackingManager::requestTrackingAuthorizationWithCompletionHandler([](auto) {});
  }
  // 2. AppLovin.
  ALSdk::shared().setMediationProvider("max");
  ALSdk::shared().initializeSdkWithCompletionHandler([] {});
  // 3. The shared native placement caches every ad it is given.
  AppLovinNativeAdManual::shared()->load(AppLovinAdId::nativeAdUnit, [](const MAAd& ad) {
    AppLovinNativeAdManual::shared()->arrNativeAd.push_back(ad);
  });
  // 4. Device kind.
  switch (UIDevice::currentDevice().userInterfaceIdiom()) {
    case UIUserInterfaceIdiom::phone: Constant::setDeviceType(DeviceType::iphone); break;
    case UIUserInterfaceIdiom::pad: Constant::setDeviceType(DeviceType::ipad); break;
    default: Constant::setDeviceType(DeviceType::unspecified); break;
  }
  // 5. Status overlay defaults.
  SVProgressHUD::setDefaultStyle(SVProgressHUD::Style::dark);
  SVProgressHUD::setDefaultMaskType(SVProgressHUD::MaskType::clear);
  SVProgressHUD::setMinimumDismissTimeInterval(0.2);
  // 6. The private folders.
  auto files = customFileManager::shared();
  files->createRootFolder();
  files->createFolder(customFileManager::kImportedFolder);
  // 7, 8, 9. Firebase, Google's interstitial, AppLovin's interstitial.
  FIRApp::configure();
  GADMobileAds::sharedInstance().startWithCompletionHandler(
      [](const GADInitializationStatus&) { AdsManager::shared()->loadInterstitial(); });
  AppLovinInterstitialsAd::shared()->load([](bool) {});
  // 10. First-launch defaults: only the presence of "isFirstTime" counts.
  auto& defaults = Constant::userDefaults();
  if (!defaults.valueForKey("isFirstTime")) {
    defaults.setBool(false, "isFirstTime");
    defaults.setValue(PlistValue(true), "kIsListView");
  }
  // 11, 12. The remembered lists.
  refreshFavouriteFiles();
  refreshRecentFiles();
  return true;
}

void AppDelegate::applicationDidBecomeActive(UIApplication&) {
  if (!flag()) return;
  flag() = false;
  AppLovinAppOpenAd::shared()->load([] {});
}

void AppDelegate::applicationDidEnterBackground(UIApplication&) {
  flag() = true;
}

}  // namespace nimbrel
