#pragma once

#include <memory>
#include <string>

#include "platform/av/AVPlayer.h"
#include "platform/uikit/UIView.h"

namespace nimbrel {

// The view whose layer shows a player's picture, fitted to the view.
class PlayerView : public UIView {
 public:
  PlayerView() : UIView(CGRect{}) {}
  explicit PlayerView(CGRect frame) : UIView(frame) {}
  const char* className() const override { return "PlayerView"; }

  // The layer's player.
  const std::shared_ptr<AVPlayer>& player() const { return player_; }
  void setPlayer(std::shared_ptr<AVPlayer> player) {
    player_ = std::move(player);
    didChange();
  }
  const std::string& videoGravity() const { return videoGravity_; }

 private:
  std::shared_ptr<AVPlayer> player_;
  std::string videoGravity_ = "AVLayerVideoGravityResizeAspect";
};

}  // namespace nimbrel
