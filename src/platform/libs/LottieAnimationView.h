#pragma once

#include <functional>
#include <string>

#include "platform/uikit/UIView.h"

enum class LottieLoopMode { playOnce, loop, autoReverse };

// The animation view of the Lottie library as state: which animation, how it loops and how fast,
// and whether it plays. A shell renders the animation itself.
class LottieAnimationView : public UIView {
 public:
  using UIView::UIView;
  const char* className() const override { return "LottieAnimationView"; }

  const std::string& animationName() const { return animationName_; }
  void setAnimationName(std::string name) {
    animationName_ = std::move(name);
    didChange();
  }
  LottieLoopMode loopMode() const { return loopMode_; }
  void setLoopMode(LottieLoopMode mode) {
    loopMode_ = mode;
    didChange();
  }
  double animationSpeed() const { return speed_; }
  void setAnimationSpeed(double speed) {
    speed_ = speed;
    didChange();
  }
  bool isAnimationPlaying() const { return playing_; }
  void play(std::function<void(bool finished)> completion = nullptr) {
    playing_ = true;
    completion_ = std::move(completion);
    didChange();
  }
  void stop() {
    playing_ = false;
    if (auto c = std::move(completion_)) c(false);
    didChange();
  }

 private:
  std::string animationName_;
  LottieLoopMode loopMode_ = LottieLoopMode::playOnce;
  double speed_ = 1;
  bool playing_ = false;
  std::function<void(bool)> completion_;
};
