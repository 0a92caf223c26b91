#pragma once

#include <memory>

#include "platform/av/AVPlayer.h"
#include "platform/uikit/UIViewController.h"

class AVPlayerViewControllerDelegate {
 public:
  virtual ~AVPlayerViewControllerDelegate() = default;
};

// The system's full-screen player, with its own Done button ("doneButtonPressed:"): pause and leave.
class AVPlayerViewController : public UIViewController {
 public:
  AVPlayerViewController() {
    registerAction("doneButtonPressed:", [this](const std::shared_ptr<NSObject>&) {
      if (player) player->pause();
      dismissViewControllerAnimated(true, nullptr);
    });
  }
  const char* className() const override { return "AVPlayerViewController"; }
  std::shared_ptr<AVPlayer> player;
  std::weak_ptr<AVPlayerViewControllerDelegate> delegate;
};
