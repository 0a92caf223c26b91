#pragma once

#include "app/viewers/PlayerView.h"
#include "app/viewers/PreviewViewController.h"
#include "platform/av/AVPlayer.h"
#include "platform/foundation/NSNotificationCenter.h"
#include "platform/uikit/UIBarButtonItem.h"

namespace nimbrel {

// Plays one video asset in the photo viewer's frame: the still until the player shows, a play or
// pause button at the right of the bar, playback stopping at the end.
class VideoPreviewViewController : public PreviewViewController {
 public:
  const char* className() const override { return "VideoPreviewViewController"; }
  static std::shared_ptr<VideoPreviewViewController> make() { return makeViewer<VideoPreviewViewController>(); }

  std::shared_ptr<PlayerView> playerView = std::make_shared<PlayerView>();
  std::shared_ptr<UIBarButtonItem> pauseBarButton;
  std::shared_ptr<UIBarButtonItem> playBarButton;
  std::shared_ptr<PHImageManager> videoImageManager = PHCachingImageManager::defaultManager();

  const std::shared_ptr<AVPlayer>& player() const { return player_; }
  void setPlayer(std::shared_ptr<AVPlayer> player);
  void setAsset(std::shared_ptr<PHAsset> asset) override;
  void videoLoad();

  void viewDidLoad() override;
  void viewWillAppear(bool animated) override;
  void viewDidAppear(bool animated) override;
  void viewWillDisappear(bool animated) override;

  void playPressedWithSender(const std::shared_ptr<NSObject>& sender);
  void pausePressedWithSender(const std::shared_ptr<NSObject>& sender);
  void reachedEndWithNotification(const NSNotification& notification);

 protected:
  VideoPreviewViewController() = default;
  template <class T>
  friend std::shared_ptr<T> makeViewer();
  void construct() override;

 private:
  std::shared_ptr<AVPlayer> player_;
};

}  // namespace nimbrel
