#pragma once

#include <memory>
#include <string>

#include "platform/foundation/NSObject.h"
#include "platform/uikit/CGGeometry.h"
#include "platform/uikit/UIImage.h"
#include "platform/uikit/UIView.h"

// A live photo: a still and a short movie of one moment.
class PHLivePhoto : public NSObject {
 public:
  PHLivePhoto(CGSize size, std::string source) : size_(size), source_(std::move(source)) {}
  CGSize size() const { return size_; }
  const std::string& source() const { return source_; }

 private:
  CGSize size_;
  std::string source_;
};

class PHLivePhotoView;

class PHLivePhotoViewDelegate {
 public:
  virtual ~PHLivePhotoViewDelegate() = default;
  virtual void livePhotoViewWillBeginPlaybackWithStyle(PHLivePhotoView& view, int style) {}
  virtual void livePhotoViewDidEndPlaybackWithStyle(PHLivePhotoView& view, int style) {}
};

// The view that shows and plays a live photo.
class PHLivePhotoView : public UIView {
 public:
  using UIView::UIView;
  const char* className() const override { return "PHLivePhotoView"; }

  const std::shared_ptr<PHLivePhoto>& livePhoto() const { return livePhoto_; }
  void setLivePhoto(std::shared_ptr<PHLivePhoto> photo) {
    livePhoto_ = std::move(photo);
    didChange();
  }
  void setDelegate(std::weak_ptr<PHLivePhotoViewDelegate> d) { delegate_ = std::move(d); }
  std::shared_ptr<PHLivePhotoViewDelegate> delegate() const { return delegate_.lock(); }

  // The "LIVE" badge; option 1 draws it over content. Its natural size is 26 by 26.
  static UIImage livePhotoBadgeImageWithOptions(unsigned options) {
    UIImage::Pixels badge;
    badge.width = 26;
    badge.height = 26;
    badge.source = options == 1 ? "badge:live-over-content" : "badge:live";
    return UIImage::withPixels(std::move(badge));
  }

 private:
  std::shared_ptr<PHLivePhoto> livePhoto_;
  std::weak_ptr<PHLivePhotoViewDelegate> delegate_;
};
