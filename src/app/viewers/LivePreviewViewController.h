#pragma once

#include "app/viewers/PreviewViewController.h"
#include "platform/photos/PHLivePhoto.h"

namespace nimbrel {

// The photo viewer with the live photo over the still, and its badge at the picture's corner.
class LivePreviewViewController : public PreviewViewController, public PHLivePhotoViewDelegate {
 public:
  const char* className() const override { return "LivePreviewViewController"; }
  static std::shared_ptr<LivePreviewViewController> make() { return makeViewer<LivePreviewViewController>(); }

  std::shared_ptr<PHImageManager> liveImageManager = PHCachingImageManager::defaultManager();
  std::shared_ptr<PHLivePhotoView> livePhotoView = std::make_shared<PHLivePhotoView>();
  std::shared_ptr<UIImageView> badgeView = std::make_shared<UIImageView>();

  void setAsset(std::shared_ptr<PHAsset> asset) override;
  void setFullscreen(bool fullscreen) override;
  void liveLoad();
  void placeBadge();

  void viewDidLoad() override;
  void viewDidAppear(bool animated) override;
  void viewDidLayoutSubviews() override;
  std::shared_ptr<UIView> viewForZoomingInScrollView(UIScrollView& scrollView) override { return livePhotoView; }
  void livePhotoViewWillBeginPlaybackWithStyle(PHLivePhotoView& view, int style) override;
  void livePhotoViewDidEndPlaybackWithStyle(PHLivePhotoView& view, int style) override;

 protected:
  LivePreviewViewController() = default;
  template <class T>
  friend std::shared_ptr<T> makeViewer();
  void construct() override;
};

}  // namespace nimbrel
