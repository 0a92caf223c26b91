#include "app/viewers/PhotosInfoVC.h"

#include "app/media/Units.h"
#include "app/viewers/InfoPulse.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FatalError.h"
#include "platform/libs/SVProgressHUD.h"
#include "platform/photos/PHAssetResource.h"

namespace nimbrel {

PhotosInfoVC::PhotosInfoVC() {
  registerAction("onExitBtn:", [this](const std::shared_ptr<NSObject>& s) { onExitBtn(s); });
  registerAction("onDoneBtn:", [this](const std::shared_ptr<NSObject>& s) { onExitBtn(s); });
}

void PhotosInfoVC::viewDidLoad() {
  UIViewController::viewDidLoad();
  popUpView->setHidden(true);
  lblContain->setText(std::to_string(models.size()) + " files");
  SVProgressHUD::showWithStatus("Fetching Details...");
  auto self = strongSelf<PhotosInfoVC>();
  auto items = models;
  DispatchQueue::global(QualityOfService::background).async([self, items] {
    std::int64_t total = 0;
    for (size_t i = 0; i < items.size(); ++i) {
      const auto& model = items[i];
      auto type = model.asset->mediaType();
      if (type == PHAssetMediaType::image || type == PHAssetMediaType::video) {
        auto resources = PHAssetResource::assetResourcesForAsset(*model.asset);
        if (!resources.empty()) {
          auto size = resources.front()->valueForKey("fileSize");
          if (!size || !size->isInteger() || size->integer() < 0) {
            fatalError("Unexpectedly found nil while unwrapping an Optional value", "Nimbrel/PhotosInfoVC", 58);
          }
          total += size->integer();
        }
      } else {
        total += model.size.bytes;
      }
      // The card appears once the last model has been handled; with none it never does.
      if (i + 1 == items.size()) {
        DispatchQueue::main().async([self, total] {
          SVProgressHUD::dismiss();
          self->lblSize->setText(Units(total).getReadableUnit());
          self->popUpView->setHidden(false);
          runPulse(*self->view());
        });
      }
    }
  });
}

void PhotosInfoVC::viewDidAppear(bool) {
  DispatchQueue::main().asyncAfter(0.1, [] {});
}

void PhotosInfoVC::onExitBtn(const std::shared_ptr<NSObject>&) {
  dismissViewControllerAnimated(false, nullptr);
}

}  // namespace nimbrel
