#include "app/viewers/VideoPreviewViewController.h"

#include "app/media/Fetch.h"
#include "platform/av/AVAsset.h"
#include "platform/av/AVAudioSession.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/NSNotificationCenter.h"

namespace nimbrel {

void VideoPreviewViewController::construct() {
  registerAction("playPressedWithSender:", [this](const std::shared_ptr<NSObject>& s) { playPressedWithSender(s); });
  registerAction("pausePressedWithSender:", [this](const std::shared_ptr<NSObject>& s) { pausePressedWithSender(s); });
  PreviewViewController::construct();
  registerOutlet("playerView", playerView);
}

void VideoPreviewViewController::viewDidLoad() {
  PreviewViewController::viewDidLoad();
  AVAudioSession::sharedInstance().setCategory(AVAudioSessionCategoryPlayback, AVAudioSessionModeDefault, 0);
  auto self = weakSelf<UIResponder>();
  pauseBarButton = std::make_shared<UIBarButtonItem>(UIBarButtonItem::pause, self, "pausePressedWithSender:");
  playBarButton = std::make_shared<UIBarButtonItem>(UIBarButtonItem::play, self, "playPressedWithSender:");
  playerView->setFrame(view()->bounds());
  view()->addSubview(playerView);
  // No zoom on video; the single tap still toggles the chrome.
  scrollView->setUserInteractionEnabled(false);
  if (doubleTapRecognizer) doubleTapRecognizer->setEnabled(false);
}


void VideoPreviewViewController::setPlayer(std::shared_ptr<AVPlayer> player) {
  player_ = std::move(player);
  if (!player_) return;
  playerView->setPlayer(player_);
  std::weak_ptr<VideoPreviewViewController> weak = strongSelf<VideoPreviewViewController>();
  NSNotificationCenter::defaultCenter().addObserver(
      weakSelf<NSObject>(), AVPlayerItemDidPlayToEndTimeNotification, player_->currentItem(),
      [weak](const NSNotification& n) {
        if (auto self = weak.lock()) self->reachedEndWithNotification(n);
      });
}

void VideoPreviewViewController::setAsset(std::shared_ptr<PHAsset> asset) {
  asset_ = std::move(asset);
  imageLoad();
  videoLoad();
}

void VideoPreviewViewController::videoLoad() {
  auto current = asset();
  if (!current || current->mediaType() != PHAssetMediaType::video) {
    player_.reset();
    return;
  }
  std::weak_ptr<VideoPreviewViewController> weak = strongSelf<VideoPreviewViewController>();
  auto options = Fetch::shared()->preview()->videoOptions();
  videoImageManager->requestAVAssetForVideo(current, options.get(), [weak](std::shared_ptr<AVAsset> answer,
                                                                            const PHImageRequestInfo&) {
    auto urlAsset = std::dynamic_pointer_cast<AVURLAsset>(answer);
    if (!urlAsset) return;
    URL url = urlAsset->url();
    DispatchQueue::main().async([weak, url] {
      auto self = weak.lock();
      if (!self) return;
      self->setPlayer(AVPlayer::playerWithURL(url));
      self->navigationItem().setRightBarButtonItem(self->pauseBarButton, false);
      self->player_->play();
    });
  });
}

void VideoPreviewViewController::viewWillAppear(bool animated) {
  PreviewViewController::viewWillAppear(animated);
  playerView->setHidden(true);
}

void VideoPreviewViewController::viewDidAppear(bool animated) {
  PreviewViewController::viewDidAppear(animated);
  playerView->setHidden(false);
  // The scroll view goes to the back: the player stands over the still from now on.
  auto root = view();
  auto keep = scrollView;
  scrollView->removeFromSuperview();
  root->insertSubviewAtIndex(keep, 0);
}

void VideoPreviewViewController::playPressedWithSender(const std::shared_ptr<NSObject>&) {
  if (player_ && player_->currentTime() == player_->currentItem()->durationSeconds()) player_->seekToTime(0);
  navigationItem().setRightBarButtonItem(pauseBarButton, true);
  if (player_) player_->play();
}

void VideoPreviewViewController::pausePressedWithSender(const std::shared_ptr<NSObject>&) {
  navigationItem().setRightBarButtonItem(playBarButton, true);
  if (player_) player_->pause();
}

void VideoPreviewViewController::reachedEndWithNotification(const NSNotification&) {
  if (!player_) return;
  player_->seekToTime(0);
  navigationItem().setRightBarButtonItem(playBarButton, true);
  player_->pause();
}

void VideoPreviewViewController::viewWillDisappear(bool animated) {
  // The base's viewWillAppear, not its viewWillDisappear: the bar stays and full screen is kept.
  PreviewViewController::viewWillAppear(animated);
  navigationItem().setRightBarButtonItem(playBarButton, false);
  if (player_) player_->pause();
  playerView->setHidden(true);
  NSNotificationCenter::defaultCenter().removeObserver(this);
}

}  // namespace nimbrel
