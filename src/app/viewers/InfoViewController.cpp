#include "app/viewers/InfoViewController.h"

#include <cmath>
#include <cstdio>
#include <sstream>

#include "app/media/AssetReaders.h"
#include "app/viewers/InfoPulse.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FatalError.h"
#include "platform/foundation/NSDateFormatter.h"
#include "platform/foundation/NSFileManager.h"
#include "platform/photos/PHAssetResource.h"
#include "platform/photos/PHImageManager.h"

namespace nimbrel {

namespace {

std::string panelDate(Date date) {
  NSDateFormatter formatter;
  formatter.setDateFormat("d MMM yyyy HH:mm");
  return formatter.stringFromDate(date);
}

// A double's default text: the shortest that reads back, with ".0" when it is whole.
std::string doubleText(double v) {
  char buffer[64];
  for (int precision = 1; precision <= 17; ++precision) {
    std::snprintf(buffer, sizeof buffer, "%.*g", precision, v);
    if (std::strtod(buffer, nullptr) == v) break;
  }
  std::string text = buffer;
  if (text.find_first_of(".eEn") == std::string::npos) text += ".0";
  return text;
}

}  // namespace

InfoViewController::InfoViewController() {
  registerAction("onExitBtn:", [this](const std::shared_ptr<NSObject>& s) { onExitBtn(s); });
  registerAction("onDoneBtn:", [this](const std::shared_ptr<NSObject>& s) { onExitBtn(s); });
}

std::string InfoViewController::durationText(double d) {
  double h = std::trunc(d / 3600);
  double f = (d / 3600 - h) * 60;
  double m = std::trunc(f);
  double s = (f - m) * 60;
  return doubleText(h) + " :" + doubleText(m) + " :" + doubleText(s);
}

std::string InfoViewController::megabytesText(std::int64_t bytes) {
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%.2f MB", static_cast<double>(bytes) * 9.5367431640625e-07);
  return buffer;
}

void InfoViewController::viewDidLoad() {
  UIViewController::viewDidLoad();
  popUpView->setHidden(true);
  if (isDocumentURL) {
    showDocument();
  } else if (asset) {
    showAsset();
  } else {
    showModel();
  }
  auto self = strongSelf<InfoViewController>();
  DispatchQueue::main().asyncAfter(0.1, [self] {
    self->popUpView->setHidden(false);
    runPulse(*self->view());
  });
}

void InfoViewController::showAsset() {
  // The path is asked for first; the other lines are filled while it comes.
  std::weak_ptr<InfoViewController> weak = strongSelf<InfoViewController>();
  auto showPath = [weak](std::optional<URL> url) {
    DispatchQueue::main().async([weak, url] {
      if (auto self = weak.lock()) self->lblFilePath->setText(url ? url->absoluteString() : std::string("..."));
    });
  };
  if (asset->mediaType() == PHAssetMediaType::image) {
    asset->requestContentEditingInputWithOptions({}, [showPath](std::shared_ptr<PHContentEditingInput> input) {
      if (!input) fatalError("Unexpectedly found nil while unwrapping an Optional value", "Nimbrel/InfoViewController", 96);
      showPath(input->fullSizeImageURL());
    });
  } else if (asset->mediaType() == PHAssetMediaType::video) {
    PHVideoRequestOptions options;
    options.version = 1;
    PHImageManager::defaultManager()->requestAVAssetForVideo(
        asset, &options, [showPath](std::shared_ptr<AVAsset> answer, const PHImageRequestInfo&) {
          auto urlAsset = std::dynamic_pointer_cast<AVURLAsset>(answer);
          showPath(urlAsset ? std::optional<URL>(urlAsset->url()) : std::nullopt);
        });
  }
  lblFileName->setText(assetFileName(*asset).value_or(std::string()));
  lblDimension->setText(std::to_string(asset->pixelWidth()) + "*" + std::to_string(asset->pixelHeight()));
  auto created = asset->creationDate();
  lblDate->setText(created ? panelDate(*created) : std::string());
  auto resources = PHAssetResource::assetResourcesForAsset(*asset);
  if (resources.empty()) return;
  auto size = resources.front()->valueForKey("fileSize");
  if (!size || !size->isInteger() || size->integer() < 0) {
    fatalError("Unexpectedly found nil while unwrapping an Optional value", "Nimbrel/InfoViewController", 121);
  }
  lblSize->setText(megabytesText(size->integer()));
}

void InfoViewController::showModel() {
  lblFileName->setText(model.name);
  lblFilePath->setText(model.identifier);
  lblDimension->setText(durationText(static_cast<double>(model.duration)));
  lblDate->setText(panelDate(model.creationDate));
}

void InfoViewController::showDocument() {
  if (!documentURL) return;
  lblFileName->setText(documentURL->lastPathComponent());
  lblFilePath->setText(documentURL->absoluteString());
  lblDimension->setText(std::string());
  auto attributes = NSFileManager::defaultManager().attributesOfItemAtPath(documentURL->path(), nullptr);
  lblDate->setText(attributes && attributes->creationDate ? panelDate(*attributes->creationDate) : std::string());
}

void InfoViewController::onExitBtn(const std::shared_ptr<NSObject>&) {
  dismissViewControllerAnimated(false, nullptr);
}

}  // namespace nimbrel
