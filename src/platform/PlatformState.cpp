#include "platform/PlatformState.h"

#include "platform/ads/ALSdk.h"
#include "platform/av/AVAssetExportSession.h"
#include "platform/av/MediaDurations.h"
#include "platform/corelocation/CLGeocoder.h"
#include "platform/foundation/NSNotificationCenter.h"
#include "platform/ads/AppLovinNetwork.h"
#include "platform/ads/FullScreenAdStage.h"
#include "platform/ads/GADMobileAds.h"
#include "platform/ads/GoogleAdsNetwork.h"
#include "platform/foundation/NSLocale.h"
#include "platform/foundation/NSPathUtilities.h"
#include "platform/foundation/NSTimeZone.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/foundation/SharedInstance.h"
#include "platform/foundation/FileCreationDateSource.h"
#include "platform/foundation/VolumeInfoSource.h"
#include "platform/libs/SVProgressHUD.h"
#include "platform/mediaplayer/MediaLibrarySource.h"
#include "platform/photos/PhotoLibrarySource.h"
#include "platform/services/FIRApp.h"
#include "platform/services/NetworkReachability.h"
#include "platform/services/PermissionAuthority.h"
#include "platform/uikit/ImageDecoder.h"
#include "platform/uikit/TextMeasurer.h"
#include "platform/uikit/UIColorCatalog.h"
#include "platform/uikit/DocumentPickerSource.h"
#include "platform/uikit/ShareActivities.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIDevice.h"
#include "platform/uikit/UINib.h"
#include "platform/uikit/UIScreen.h"
#include "platform/uikit/UIStoryboard.h"
#include "platform/uikit/UserNotice.h"

void resetPlatformState() {
  UIApplication::sharedApplication().reset();
  SharedInstances::resetAll();
  SVProgressHUD::reset();
  FullScreenAdStage::shared().reset();
  ALSdk::shared().reset();
  GADMobileAds::sharedInstance().reset();
  FIRApp::reset();
  AppLovinNetwork::install(nullptr);
  GoogleAdsNetwork::install(nullptr);
  PermissionAuthority::install(nullptr);
  NetworkReachability::install(nullptr);
  PhotoLibrarySource::install(nullptr);
  MediaLibrarySource::install(nullptr);
  VolumeInfoSource::install(nullptr);
  FileCreationDateSource::install(nullptr);
  DocumentPickerSource::install(nullptr);
  ShareActivities::install(nullptr);
  GeocoderSource::install(nullptr);
  MediaDurations::install(nullptr);
  AssetExporter::install(nullptr);
  ImageDecoder::install(nullptr);
  UIColorCatalog::reset();
  NSNotificationCenter::defaultCenter().reset();
  UIStoryboard::unregisterAll();
  UINib::unregisterAll();
  UserNotice::reset();
  NSUserDefaults::installStandard(std::make_shared<InMemoryPreferencesStore>());
  UIScreen::mainScreen().configure({390, 844}, 3);
  UIDevice::currentDevice().configure(UIUserInterfaceIdiom::phone, "17.0");
  NSLocale::setCurrentLocaleIdentifier("en_US");
  NSTimeZone::setLocalTimeZoneName("UTC");
  TextMeasurer::install(nullptr);
  setApplicationHomeDirectory("");
}
