#include "app/viewers/LivePreviewViewController.h"

#include <algorithm>

#include "app/media/Fetch.h"
#include "platform/uikit/UIScreen.h"

namespace nimbrel {

void LivePreviewViewController::construct() {
  PreviewViewController::construct();
  registerOutlet("livePhotoView", livePhotoView);
  registerOutlet("badgeView", badgeView);
}

void LivePreviewViewController::viewDidLoad() {
  PreviewViewController::viewDidLoad();
  livePhotoView->setFrame(scrollView->bounds());
  livePhotoView->setContentMode(UIViewContentMode::scaleAspectFit);
  scrollView->addSubview(livePhotoView);
  badgeView->setImage(PHLivePhotoView::livePhotoBadgeImageWithOptions(1));
  CGSize badge = badgeView->image()->size();
  badgeView->setFrame(CGRect{badgeView->frame().origin, badge});
  livePhotoView->addSubview(badgeView);
}

void LivePreviewViewController::viewDidAppear(bool animated) {
  PreviewViewController::viewDidAppear(animated);
  imageView->setHidden(true);
}

void LivePreviewViewController::viewDidLayoutSubviews() {
  PreviewViewController::viewDidLayoutSubviews();
  placeBadge();
}

void LivePreviewViewController::placeBadge() {
  const auto& photo = livePhotoView->livePhoto();
  if (!photo) {
    badgeView->setFrame(CGRect{{0, 0}, badgeView->frame().size});
    return;
  }
  double a = photo->size().width, b = photo->size().height;
  double W = livePhotoView->frame().width(), H = livePhotoView->frame().height();
  double q = std::max(b / H, a / W);
  badgeView->setFrame(CGRect{{(W - a / q) * 0.5, (H - b / q) * 0.5}, badgeView->frame().size});
}

void LivePreviewViewController::liveLoad() {
  auto current = asset();
  if (!current) return;
  double scale = UIScreen::mainScreen().scale();
  CGSize size{livePhotoView->frame().width() * scale, livePhotoView->frame().height() * scale};
  std::weak_ptr<LivePreviewViewController> weak = strongSelf<LivePreviewViewController>();
  auto options = Fetch::shared()->preview()->livePhotoOptions();
  PHImageManager::defaultManager()->requestLivePhotoForAsset(
      current, size, PHImageContentMode::aspectFit, options.get(),
      [weak](std::shared_ptr<PHLivePhoto> photo, const PHImageRequestInfo&) {
        auto self = weak.lock();
        if (!self || !photo) return;
        self->livePhotoView->setLivePhoto(std::move(photo));
        self->placeBadge();
      });
}

void LivePreviewViewController::setAsset(std::shared_ptr<PHAsset> asset) {
  asset_ = std::move(asset);
  imageLoad();
  liveLoad();
}

void LivePreviewViewController::setFullscreen(bool value) {
  bool changed = value != fullscreen_;
  fullscreen_ = value;
  if (changed) UIView::animateWithDuration(0.3, [this] { chromeUpdate(); });
  UIView::animateWithDuration(0.3, [this] { badgeView->setAlpha(fullscreen_ ? 0.0 : 1.0); });
}

void LivePreviewViewController::livePhotoViewWillBeginPlaybackWithStyle(PHLivePhotoView&, int) {
  if (!fullscreen()) UIView::animateWithDuration(0.3, [this] { badgeView->setAlpha(0.0); });
}

void LivePreviewViewController::livePhotoViewDidEndPlaybackWithStyle(PHLivePhotoView&, int) {
  if (!fullscreen()) UIView::animateWithDuration(0.3, [this] { badgeView->setAlpha(1.0); });
}

}  // namespace nimbrel
