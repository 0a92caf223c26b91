#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/foundation/ChangeSignal.h"
#include "platform/uikit/UIImage.h"

// The status overlay library as a state object with that library's rules: every call takes effect
// one main-queue turn later; a self-dismissing status (info, success, error, image) stays for
// max(minimum dismiss time, 0.06 s per UTF-16 unit + 0.5 s), capped by the maximum; a dismissal
// fades out over 0.15 s and only then runs its completion — unless a new show interrupts the fade,
// in which case the completion never runs. A dismissal during a fade restarts it and keeps the
// earlier completion.
class SVProgressHUD {
 public:
  enum class Style { light = 0, dark = 1, custom = 2 };
  enum class MaskType { none = 1, clear = 2, black = 3, gradient = 4, custom = 5 };
  enum class Kind { none, status, progress, info, success, error, image };
  using Completion = std::function<void()>;

  struct State {
    bool visible = false;
    Kind kind = Kind::none;
    std::optional<std::string> status;
    float progress = -1;
    std::optional<UIImage> image;
    bool fadingOut = false;
  };

  static void setDefaultStyle(Style style);
  static void setDefaultMaskType(MaskType mask);
  static void setMinimumDismissTimeInterval(double seconds);
  static void setMaximumDismissTimeInterval(double seconds);
  static Style defaultStyle();
  static MaskType defaultMaskType();
  static double minimumDismissTimeInterval();

  static void show();
  static void showWithStatus(std::optional<std::string> status);
  static void showProgress(float progress, std::optional<std::string> status = std::nullopt);
  static void showInfoWithStatus(std::optional<std::string> status);
  static void showSuccessWithStatus(std::optional<std::string> status);
  static void showErrorWithStatus(std::optional<std::string> status);
  static void showImage(UIImage image, std::optional<std::string> status);
  static void dismiss();
  static void dismissWithCompletion(Completion completion);
  static void dismissWithDelay(double delay);
  static void dismissWithDelay(double delay, Completion completion);
  static bool isVisible();

  static double displayDurationForString(const std::optional<std::string>& status);
  static constexpr double kFadeInAnimationDuration = 0.15;
  static constexpr double kFadeOutAnimationDuration = 0.15;

  static State state();
  static ChangeSignal& changed();
  // Back to a freshly loaded library (tests).
  static void reset();
};
