#pragma once

#include <memory>

#include "platform/photos/PHAsset.h"
#include "platform/photos/PHImageManager.h"
#include "platform/uikit/UIGestureRecognizer.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UIScrollView.h"
#include "platform/uikit/UIViewController.h"

namespace nimbrel {

// One asset full size: a zoomable still, a two-line title in the navigation bar, and a tap that
// hides the chrome. Made by `make()` (the platform's plain init); the subclasses add live photo
// and video.
class PreviewViewController : public UIViewController, public UIScrollViewDelegate {
 public:
  const char* className() const override { return "PreviewViewController"; }
  static std::shared_ptr<PreviewViewController> make();

  std::shared_ptr<PHImageManager> imageManager = PHCachingImageManager::defaultManager();
  std::shared_ptr<UIImageView> imageView = std::make_shared<UIImageView>();
  std::shared_ptr<UIScrollView> scrollView = std::make_shared<UIScrollView>();
  std::shared_ptr<UITapGestureRecognizer> singleTapRecognizer;
  std::shared_ptr<UITapGestureRecognizer> doubleTapRecognizer;
  std::shared_ptr<UILabel> titleLabel = std::make_shared<UILabel>();

  virtual std::shared_ptr<PHAsset> asset() const { return asset_; }
  // Stores and starts loading.
  virtual void setAsset(std::shared_ptr<PHAsset> asset);
  virtual bool fullscreen() const { return fullscreen_; }
  virtual void setFullscreen(bool fullscreen);
  // Stores without loading (the builder's path).
  void storeAsset(std::shared_ptr<PHAsset> asset) { asset_ = std::move(asset); }
  void imageLoad();

  void viewDidLoad() override;
  void viewWillDisappear(bool animated) override;
  bool prefersStatusBarHidden() const override { return fullscreen(); }

  void didSingleTap(const std::shared_ptr<NSObject>& sender);
  void didDoubleTap(const std::shared_ptr<NSObject>& sender);
  std::shared_ptr<UIView> viewForZoomingInScrollView(UIScrollView& scrollView) override;
  void scrollViewDidZoom(UIScrollView& scrollView) override;

 protected:
  PreviewViewController() = default;
  template <class T>
  friend std::shared_ptr<T> makeViewer();
  // The construction steps that need the object to be owned.
  virtual void construct();
  void applyBackgroundRule();
  void chromeUpdate();
  // The base class's operations, for subclasses that call them by name.
  void baseViewWillDisappear(bool animated) { PreviewViewController::viewWillDisappear(animated); }

  std::shared_ptr<PHAsset> asset_;
  bool fullscreen_ = false;
};

template <class T>
std::shared_ptr<T> makeViewer() {
  std::shared_ptr<T> viewer(new T());
  viewer->construct();
  return viewer;
}

}  // namespace nimbrel
