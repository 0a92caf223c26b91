#include "platform/ads/MANativeAdView.h"

#include "platform/uikit/UIButton.h"
#include "platform/uikit/UILabel.h"

void MANativeAdView::render(const MAAd& ad) {
  ad_ = ad;
  if (binder_) {
    if (auto title = as<UILabel>(viewWithTag(binder_->titleLabelTag))) title->setText(ad.title);
    if (auto body = as<UILabel>(viewWithTag(binder_->bodyLabelTag))) body->setText(ad.body);
    if (auto cta = as<UIButton>(viewWithTag(binder_->callToActionButtonTag))) {
      cta->setTitle(ad.callToAction);
    }
  }
  didChange();
}
