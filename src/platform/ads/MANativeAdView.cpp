#include "platform/ads/MANativeAdView.h"

#include "platform/uikit/UIButton.h"
#include "platform/uikit/UILabel.h"

namespace {
// Tag 0 is every view's default: a part bound to it is not bound at all.
template <class T>
std::shared_ptr<T> bound(MANativeAdView& view, long tag) {
  return tag == 0 ? nullptr : as<T>(view.viewWithTag(tag));
}
}  // namespace

void MANativeAdView::render(const MAAd& ad) {
  ad_ = ad;
  if (binder_) {
    if (auto title = bound<UILabel>(*this, binder_->titleLabelTag)) title->setText(ad.title);
    if (auto body = bound<UILabel>(*this, binder_->bodyLabelTag)) body->setText(ad.body);
    if (auto cta = bound<UIButton>(*this, binder_->callToActionButtonTag)) {
      cta->setTitle(ad.callToAction);
    }
  }
  didChange();
}
