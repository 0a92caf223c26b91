#include "app/storage/StorageAnalysisVC.h"

#include <cstdlib>

#include "app/ads/AppLovinInterstitialsAd.h"
#include "app/VC/PopupMenu.h"
#include "app/core/AppData.h"
#include "app/media/AssetReaders.h"
#include "app/media/Units.h"
#include "app/storage/StorageFigures.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FatalError.h"
#include "platform/foundation/NSByteCountFormatter.h"
#include "platform/foundation/NSFileManager.h"
#include "platform/libs/SVProgressHUD.h"
#include "platform/mediaplayer/MPMediaLibrary.h"
#include "platform/mediaplayer/MPMediaQuery.h"
#include "platform/photos/PHAsset.h"
#include "platform/photos/PHImageManager.h"
#include "platform/photos/PHPhotoLibrary.h"
#include "platform/uikit/UIAlertController.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIScreen.h"
#include "platform/uikit/UIStoryboard.h"

namespace nimbrel {

namespace {

constexpr const char* kFile = "Nimbrel/StorageAnalysisVC";

UIColor sectorColor(int r, int g, int b) {
  // Each component is the single-precision quotient of the number and 255.
  return UIColor::rgba(static_cast<float>(r) / 255.0f, static_cast<float>(g) / 255.0f,
                       static_cast<float>(b) / 255.0f, 1.0);
}

std::int64_t requireFigure(std::optional<std::int64_t> figure) {
  if (!figure) fatalError("Unexpectedly found nil while unwrapping an Optional value", kFile, 0);
  return *figure;
}

// The number at the head of a size text ("119.21 GB" gives 119.21), as doubleValue reads it.
double leadingNumber(const std::string& text) {
  return std::strtod(text.c_str(), nullptr);
}

}  // namespace

StorageAnalysisVC::StorageAnalysisVC()
    : videoColor(sectorColor(148, 46, 146)), imageColor(sectorColor(120, 110, 230)),
      audioColor(sectorColor(110, 240, 190)), otherColor(sectorColor(248, 167, 34)),
      defaultColor(sectorColor(193, 193, 193)), availableWidth(UIScreen::mainScreen().bounds().width()),
      availableHeight(UIScreen::mainScreen().bounds().height()) {
  registerAction("onMenuBtn:", [this](const std::shared_ptr<NSObject>& s) { onMenuBtn(s); });
  registerAction("onBackBtn:", [this](const std::shared_ptr<NSObject>& s) { onBackBtn(s); });
}

const UIColor& StorageAnalysisVC::colorOf(Sector sector) const {
  switch (sector) {
    case Sector::video: return videoColor;
    case Sector::images: return imageColor;
    case Sector::audio: return audioColor;
    case Sector::other: return otherColor;
    case Sector::free: return defaultColor;
  }
  return defaultColor;
}

void StorageAnalysisVC::viewDidLoad() {
  UIViewController::viewDidLoad();
  AppLovinInterstitialsAd::shared()->load([](bool) {});
  loadScreenNativeAd(appLovinNativeAd, weakSelf<NSObject>(), nativeAdview);
  auto self = strongSelf<StorageAnalysisVC>();
  mainScrollView->setDelegate(std::shared_ptr<UIScrollViewDelegate>(self));
  HEADERView->setDelegate(std::shared_ptr<MGCollapsingHeaderDelegate>(self));
  HEADERView->setAlwaysCollapse(true);
  HEADERView->setMinimumHeaderHeight(50.0);
  HEADERView->setCollapsingConstraint(heightOfHeaderViewConstant);
  heightOfHeaderViewConstant->setConstant(44.0);
  view()->layoutIfNeeded();
  showVolume();
  setUpChart();
}

void StorageAnalysisVC::showVolume() {
  auto data = AppData::shared();
  requireFigure(fileSystemFreeBytes());
  requireFigure(fileSystemSizeBytes());
  data->usedSpace = checkedSub(requireFigure(fileSystemSizeBytes()), requireFigure(fileSystemFreeBytes()));
  std::int64_t total = volumeTotalBytes();
  std::int64_t important = importantUsageBytes();
  std::int64_t used = usedPercentage(total, important);
  valueLabel->setText(std::to_string(used) + ".0%\nUsed");

  std::int64_t free = requireFigure(fileSystemFreeBytes());
  freePR = runShare(free, requireFigure(fileSystemSizeBytes()));
  timeDelta = 1.0 / 24.0;
  velocity = 0;
  acceleration = 30;
  WspeedValue = leadingNumber(Units(total).getReadableUnit()) - leadingNumber(Units(free).getReadableUnit());
  lblInternalStorage->setText(NSByteCountFormatter::stringFromByteCount(important, NSByteCountFormatterCountStyle::decimal) +
                              "  of " + capacityText(total) + " available");
}

void StorageAnalysisVC::animate(double duration) {
  pieChartView->animateToScaleValues(std::vector<double>(valueArr.begin(), valueArr.end()), duration);
}

void StorageAnalysisVC::setUpChart() {
  pieChartView->startAngle = 1.5707963267948966;
  pieChartView->clockwise = false;
  pieChartView->lineWidth = 10;
  pieChartView->setSectorColors(std::vector<UIColor>(5, defaultColor));
  pieChartView->animateToScaleValues(std::vector<double>(defaultArr.begin(), defaultArr.end()), 0.0);
  auto data = AppData::shared();
  if (data->videoSpace != 0 && data->imagesSpace.bytes != 0 && data->audioSpace != 0 && data->otherSpace != 0) {
    fastPath();
  } else {
    startRun();
  }
}

void StorageAnalysisVC::fastPath() {
  auto data = AppData::shared();
  std::int64_t total = requireFigure(fileSystemSizeBytes());
  pieChartView->setSectorColors({videoColor, imageColor, audioColor, otherColor, defaultColor});
  float video = fastShare(data->videoSpace, total);
  float images = fastShare(data->imagesSpace.bytes, total);
  float audio = fastShare(data->audioSpace, total);
  float other = fastShare(data->otherSpace, total);
  valueArr = {video, images, audio, other, 1.0f - video - images - audio - other};
  animate(2.0);
  lblVideo->setText(Units(data->videoSpace).getReadableUnit());
  lblImages->setText(data->imagesSpace.getReadableUnit());
  lblAudio->setText(Units(data->audioSpace).getReadableUnit());
  lblOther->setText(Units(data->otherSpace).getReadableUnit());
  lblFreeSpace->setText(Units(requireFigure(fileSystemFreeBytes())).getReadableUnit());
}

// ---- The staged run ----

void StorageAnalysisVC::startRun() {
  auto self = strongSelf<StorageAnalysisVC>();
  auto run = std::make_shared<Run>();
  PHPhotoLibrary::requestAuthorization([self, run](PHAuthorizationStatus status) {
    switch (status) {
      case PHAuthorizationStatus::authorized: self->videoStep(run); break;
      case PHAuthorizationStatus::restricted:
      case PHAuthorizationStatus::denied: DispatchQueue::main().async([] {}); break;
      case PHAuthorizationStatus::notDetermined:
      case PHAuthorizationStatus::limited: break;
      default: fatalError("Unknown case of PHAuthorizationStatus", kFile, 0);
    }
  });
}

void StorageAnalysisVC::videoStep(const std::shared_ptr<Run>& run) {
  auto videos = PHAsset::fetchAssetsWithMediaType(PHAssetMediaType::video, nullptr);
  auto self = strongSelf<StorageAnalysisVC>();
  DispatchQueue::global(QualityOfService::background).async([self, run, videos] {
    if (videos.count() >= 1) {
      for (size_t i = 0; i < videos.count(); ++i) {
        // The image step does not wait for these answers.
        PHImageManager::defaultManager()->requestAVAssetForVideo(
            videos[i], nullptr, [self, run](std::shared_ptr<AVAsset> answer, const PHImageRequestInfo&) {
              auto urlAsset = std::dynamic_pointer_cast<AVURLAsset>(answer);
              if (!urlAsset) return;
              auto attributes = NSFileManager::defaultManager().attributesOfItemAtPath(urlAsset->url().path(), nullptr);
              std::int64_t size = attributes ? attributes->size : 0;
              if (size < 0) fatalError("Negative value is not representable", kFile, 0);
              std::int64_t before = run->video.load();
              while (!run->video.compare_exchange_weak(before, checkedAdd(before, size))) {
              }
              DispatchQueue::main().asyncAfter(1.0, [self, run] { self->update(Sector::video, run->video.load()); });
            });
      }
    }
    DispatchQueue::main().async([self, run] { self->imageStep(run); });
  });
}

void StorageAnalysisVC::imageStep(const std::shared_ptr<Run>& run) {
  auto options = std::make_shared<PHFetchOptions>();
  options->includeHiddenAssets = true;
  auto assets = PHAsset::fetchAssetsWithOptions(options.get());
  auto self = strongSelf<StorageAnalysisVC>();
  DispatchQueue::global(QualityOfService::background).async([self, run, assets] {
    // A closed range from 0 to count − 1: an empty library cannot form it.
    if (assets.count() == 0) fatalError("Range requires lowerBound <= upperBound", "Swift/ClosedRange.swift", 347);
    for (size_t i = 0; i < assets.count(); ++i) {
      const auto& asset = assets[i];
      run->kilobytes.push_back(assetSizeInKB(*asset));
      std::uint64_t size = assetFileSize(*asset);
      if (size > static_cast<std::uint64_t>(INT64_MAX)) fatalError("Not enough bits to represent the passed value", kFile, 0);
      run->image.store(checkedAdd(run->image.load(), static_cast<std::int64_t>(size)));
      DispatchQueue::main().asyncAfter(1.0, [self, run] { self->update(Sector::images, run->image.load()); });
    }
    DispatchQueue::main().asyncAfter(5.0, [self, run] {
      DispatchQueue::main().asyncAfter(3.0, [self, run] { self->audioStep(run); });
    });
  });
}

void StorageAnalysisVC::audioStep(const std::shared_ptr<Run>& run) {
  if (MPMediaLibrary::authorizationStatus() == MPMediaLibraryAuthorizationStatus::authorized) {
    audioItems(run);
    return;
  }
  auto self = strongSelf<StorageAnalysisVC>();
  MPMediaLibrary::requestAuthorization([self, run](MPMediaLibraryAuthorizationStatus status) {
    if (status == MPMediaLibraryAuthorizationStatus::authorized) {
      self->audioItems(run);
    } else if (status == MPMediaLibraryAuthorizationStatus::denied) {
      DispatchQueue::main().async([self] { self->showMusicAlert(); });
    }
  });
}

void StorageAnalysisVC::audioItems(const std::shared_ptr<Run>& run) {
  auto items = MPMediaQuery::songsQuery()->items();
  if (!items) fatalError("Unexpectedly found nil while unwrapping an Optional value", kFile, 0);
  auto collection = MPMediaItemCollection::collectionWithItems(*items);
  auto self = strongSelf<StorageAnalysisVC>();
  for (size_t i = 0; i < collection->count(); ++i) {
    auto size = collection->items()[i]->valueForProperty("fileSize");
    if (!size || !size->isInteger()) fatalError("Unexpectedly found nil while unwrapping an Optional value", kFile, 0);
    run->audio.store(checkedAdd(run->audio.load(), size->integer()));
    DispatchQueue::main().asyncAfter(1.0, [self, run] { self->update(Sector::audio, run->audio.load()); });
  }
  DispatchQueue::main().asyncAfter(5.0, [self, run] { self->closingStep(run); });
}

void StorageAnalysisVC::update(Sector sector, std::int64_t sum) {
  std::int64_t total = requireFigure(fileSystemSizeBytes());
  float share = runShare(sum, total);
  auto data = AppData::shared();
  std::shared_ptr<UILabel> label;
  switch (sector) {
    case Sector::video:
      videoPR = share;
      valueArr[0] = share;
      valueArr[4] = 1.0f - videoPR;
      label = lblVideo;
      data->videoSpace = 0;
      data->videoSpace = sum;
      break;
    case Sector::images:
      imagePR = share;
      valueArr[1] = share;
      valueArr[4] = 1.0f - videoPR - imagePR;
      label = lblImages;
      data->imagesSpace = Units(0);
      data->imagesSpace = Units(sum);
      break;
    case Sector::audio:
      audioPR = share;
      valueArr[2] = share;
      valueArr[4] = 1.0f - videoPR - imagePR - audioPR;
      label = lblAudio;
      data->audioSpace = 0;
      data->audioSpace = sum;
      break;
    default: return;
  }
  label->setText(Units(sum).getReadableUnit());
  auto colors = pieChartView->sectorColors();
  colors.at(static_cast<size_t>(sector)) = colorOf(sector);
  pieChartView->setSectorColors(std::move(colors));
  animate(2.0);
}

void StorageAnalysisVC::closingStep(const std::shared_ptr<Run>&) {
  SVProgressHUD::dismiss();
  auto data = AppData::shared();
  data->otherSpace = checkedSub(checkedSub(checkedSub(data->usedSpace, data->videoSpace), data->audioSpace),
                                data->imagesSpace.bytes);
  std::int64_t total = requireFigure(fileSystemSizeBytes());
  otherPR = runShare(data->otherSpace, total);
  valueArr[3] = otherPR;
  valueArr[4] = 1.0f - videoPR - imagePR - audioPR - otherPR;
  lblOther->setText(Units(data->otherSpace).getReadableUnit());
  auto colors = pieChartView->sectorColors();
  colors.at(3) = otherColor;
  pieChartView->setSectorColors(std::move(colors));
  animate(2.0);
  lblFreeSpace->setText(Units(requireFigure(fileSystemFreeBytes())).getReadableUnit());
}

void StorageAnalysisVC::showMusicAlert() {
  auto alert = std::make_shared<UIAlertController>(
      std::string("Nimbrel  Would Like To Access the Music"),
      std::string("You must give the app permission to access the Mp3 first.\nGoto settings and give permission to access Mp3."),
      UIAlertControllerStyle::alert);
  alert->addAction({"Open Settings", UIAlertActionStyle::cancel, [](const UIAlertAction&) {
                      if (auto url = URL::withString(UIApplicationOpenSettingsURLString)) {
                        UIApplication::sharedApplication().openURL(*url, {}, nullptr);
                      }
                    }});
  presentViewController(alert, true, nullptr);
}

// ---- Appearance, header and actions ----

void StorageAnalysisVC::viewWillAppear(bool) {
  AppLovinInterstitialsAd::shared()->offerInterstitial();
}

void StorageAnalysisVC::scrollViewDidScroll(UIScrollView&) {
  HEADERView->collapseWithScroll(*mainScrollView);
}

void StorageAnalysisVC::headerDidFinishCollapsing() { TitleView->setHidden(false); }
void StorageAnalysisVC::headerDidFinishExpanding() { TitleView->setHidden(true); }

void StorageAnalysisVC::onMenuBtn(const std::shared_ptr<NSObject>& sender) {
  auto anchor = std::dynamic_pointer_cast<UIView>(sender);
  if (!anchor) anchor = btnMenu;
  std::weak_ptr<StorageAnalysisVC> weak = strongSelf<StorageAnalysisVC>();
  showPopupMenu(*this, anchor, {"Settings  "}, false, false, [weak](long index) {
    auto self = weak.lock();
    if (!self || index != 0) return;
    auto settings = UIStoryboard::storyboardWithName("Main").instantiateViewControllerWithIdentifier("SettingVC");
    if (!settings) fatalError("Storyboard (<UIStoryboard>) doesn't contain a view controller with identifier 'SettingVC'", "UIStoryboard", 0);
    settings->setModalPresentationStyle(UIModalPresentationStyle::overFullScreen);
    DispatchQueue::main().asyncAfter(0.5, [weak, settings] {
      if (auto s = weak.lock()) s->presentViewController(settings, true, nullptr);
    });
  });
}

void StorageAnalysisVC::onBackBtn(const std::shared_ptr<NSObject>&) {
  dismissViewControllerAnimated(false, nullptr);
}

}  // namespace nimbrel
