#pragma once

#include <memory>
#include <string>

#include "platform/av/AVPlayer.h"
#include "platform/foundation/NSTimer.h"
#include "platform/mediaplayer/MPMediaItem.h"
#include "platform/uikit/UIButton.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UISlider.h"
#include "platform/uikit/UIViewController.h"

namespace nimbrel {

// Plays one song full screen. The time it shows is its own one-second counter, not the player's
// position; `isPlay` is true while the user has paused (the name says the reverse).
class MusicPlayerVC : public UIViewController {
 public:
  static inline constexpr const char* kTypeName = "MusicPlayerVC";
  const char* className() const override { return kTypeName; }
  MusicPlayerVC();

  std::shared_ptr<AVPlayer> player;
  long currentTime = 0;
  // The run loop keeps a scheduled timer; the timer keeps the screen, so a dismissed screen
  // ticks on until it is paused.
  std::weak_ptr<NSTimer> timer;
  long TotalSeconds = 0;
  bool isPlay = false;
  std::shared_ptr<MPMediaItem> song;

  std::shared_ptr<UIImageView> ivSongBanner;
  std::shared_ptr<UILabel> lblSongTitle;
  std::shared_ptr<UILabel> lblArtist;
  std::shared_ptr<UISlider> sliderOutlet;
  std::shared_ptr<UIImageView> ivBg;
  std::shared_ptr<UILabel> lblTime;
  std::shared_ptr<UILabel> lblTotalTime;
  std::shared_ptr<UIButton> btnPlayOutlet;

  void viewDidLoad() override;
  void viewDidLayoutSubviews() override;
  void viewWillAppear(bool animated) override;
  void viewWillDisappear(bool animated) override;

  void sliderValueChange(const std::shared_ptr<NSObject>& sender);
  void btnPlay(const std::shared_ptr<NSObject>& sender);
  void btnLessTime(const std::shared_ptr<NSObject>& sender);
  void btnAddTime(const std::shared_ptr<NSObject>& sender);
  void btnClose(const std::shared_ptr<NSObject>& sender);
  void backAction(const std::shared_ptr<NSObject>& sender);
  void updateTimer();

  // "mm:ss", or "hh:mm:ss" from an hour on (either sign), two digits at least per field.
  static std::string timeText(long seconds);

 private:
  void loadArtwork(CGSize size);
  void scheduleTimer();
  void afterJump();
};

}  // namespace nimbrel
