#pragma once

#include <memory>
#include <optional>
#include <string>

#include "app/kit/HUDFigureView.h"
#include "app/kit/ProgressHUDTypes.h"
#include "app/kit/ProgressView.h"
#include "platform/foundation/NSNotificationCenter.h"
#include "platform/foundation/NSTimer.h"
#include "platform/uikit/UIActivityIndicatorView.h"
#include "platform/uikit/UIFont.h"
#include "platform/uikit/UIImage.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UIToolbar.h"

namespace nimbrel {

inline constexpr const char* UIKeyboardWillShowNotification = "UIKeyboardWillShowNotification";
inline constexpr const char* UIKeyboardWillHideNotification = "UIKeyboardWillHideNotification";
inline constexpr const char* UIKeyboardDidShowNotification = "UIKeyboardDidShowNotification";
inline constexpr const char* UIKeyboardDidHideNotification = "UIKeyboardDidHideNotification";
inline constexpr const char* UIDeviceOrientationDidChangeNotification = "UIDeviceOrientationDidChangeNotification";
// userInfo: a double, and a CGRect.
inline constexpr const char* UIKeyboardAnimationDurationUserInfoKey = "UIKeyboardAnimationDurationUserInfoKey";
inline constexpr const char* UIKeyboardFrameEndUserInfoKey = "UIKeyboardFrameEndUserInfoKey";

// The program's own blocking overlay: a rounded card over the window with an animation, an icon,
// a still or a progress ring, and a line of text. One shared view; every class operation hops to
// the main queue before it touches it.
class ProgressHUD : public UIView {
 public:
  ProgressHUD();
  const char* className() const override { return "ProgressHUD"; }
  static std::shared_ptr<ProgressHUD> shared();

  std::shared_ptr<UIView> viewBackground;
  std::shared_ptr<UIToolbar> toolbarHUD;
  std::shared_ptr<UILabel> labelStatus;
  std::shared_ptr<ProgressView> viewProgress;
  std::shared_ptr<HUDFigureView> viewAnimation;
  std::shared_ptr<HUDFigureView> viewAnimatedIcon;
  std::shared_ptr<UIImageView> staticImageView;
  std::shared_ptr<NSTimer> timer;

  // Class-level settings, kept on the shared overlay.
  static AnimationType animationType();
  static void setAnimationType(AnimationType type);
  static UIColor colorBackground();
  static void setColorBackground(UIColor color);
  static UIColor colorHUD();
  static void setColorHUD(UIColor color);
  static UIColor colorStatus();
  static void setColorStatus(UIColor color);
  static UIColor colorAnimation();
  static void setColorAnimation(UIColor color);
  static UIColor colorProgress();
  static void setColorProgress(UIColor color);
  static UIFont fontStatus();
  static void setFontStatus(UIFont font);
  static UIImage imageSuccess();
  static void setImageSuccess(UIImage image);
  static UIImage imageError();
  static void setImageError(UIImage image);

  // `interaction` true lets touches through to the screen below.
  static void show(std::optional<std::string> status = std::nullopt, bool interaction = true);
  static void show(std::optional<std::string> status, AlertIcon icon, bool interaction = true);
  static void show(std::optional<std::string> status, AnimatedIcon icon, bool interaction = true);
  static void showSucceed(std::optional<std::string> status, std::optional<UIImage> image, bool interaction = true);
  static void showFailed(std::optional<std::string> status, std::optional<UIImage> image, bool interaction = true);
  static void showSucceed(std::optional<std::string> status = std::nullopt, bool interaction = true);
  static void showFailed(std::optional<std::string> status = std::nullopt, bool interaction = true);
  static void showAdded(std::optional<std::string> status = std::nullopt, bool interaction = true);
  static void showProgress(double progress, bool interaction = false);
  static void showProgress(std::optional<std::string> status, double progress, bool interaction = false);
  // Fades the card out, then forgets every view of the overlay.
  static void dismiss();
  // Forgets every view at once.
  static void remove();

  // Observer of the keyboard and orientation notifications; null when called from a show.
  void setupPosition(const NSNotification* notification);

  // How long a self-hiding show with this text stands: 0.03 s a character, plus 1.25 s.
  static double hideDelay(const std::string& text);

 private:
  struct Request {
    std::optional<std::string> status;
    std::optional<double> progress;
    bool still = false;  // an icon or an image instead of the animation
    AnimatedIcon animatedIcon = AnimatedIcon::none;
    std::optional<UIImage> image;
    bool hides = false;
    bool interaction = true;
    // The colour a template still is drawn in.
    std::optional<UIColor> tint;
  };
  static void post(Request request);
  void setup(const Request& request);
  void setupBackground(bool interaction);
  void setupToolbar();
  void setupLabel(const std::optional<std::string>& status);
  void setupContent(const Request& request);
  void setupSize();
  void hide();
  void removeViews();
  void observeNotifications();

  AnimationType animationType_ = AnimationType::systemActivityIndicator;
  UIColor colorBackground_ = UIColor::rgba(0, 0, 0, 0.2);
  UIColor colorHUD_ = UIColor::systemGrayColor();
  UIColor colorStatus_ = UIColor::labelColor();
  UIColor colorAnimation_ = UIColor::lightGrayColor();
  UIColor colorProgress_ = UIColor::lightGrayColor();
  UIFont fontStatus_ = UIFont::boldSystemFontOfSize(24);
  // Drawn as templates, in green and in red.
  UIImage imageSuccess_ = UIImage::systemImageNamed("checkmark");
  UIImage imageError_ = UIImage::systemImageNamed("xmark");
  std::shared_ptr<UIActivityIndicatorView> spinner_;
};

// Blocks the window with the spinner in the brand colour: the kit's one-call waiting state.
void loadingOverlay();

}  // namespace nimbrel
