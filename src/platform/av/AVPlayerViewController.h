#pragma once

#include <memory>

#include "platform/av/AVPlayer.h"
#include "platform/uikit/UIViewController.h"

class AVPlayerViewControllerDelegate {
 public:
  virtual ~AVPlayerViewControllerDelegate() = default;
};

// The system's full-screen player.
class AVPlayerViewController : public UIViewController {
 public:
  const char* className() const override { return "AVPlayerViewController"; }
  std::shared_ptr<AVPlayer> player;
  std::weak_ptr<AVPlayerViewControllerDelegate> delegate;
};
