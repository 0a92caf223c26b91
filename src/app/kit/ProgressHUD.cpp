#include "app/kit/ProgressHUD.h"

#include <cmath>

#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/SharedInstance.h"
#include "platform/uikit/TextMeasurer.h"
#include "platform/uikit/UIColorCatalog.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIScreen.h"
#include "platform/uikit/UIWindow.h"

namespace nimbrel {

namespace {

const char* const kObserved[] = {UIKeyboardWillShowNotification, UIKeyboardWillHideNotification,
                                 UIKeyboardDidShowNotification, UIKeyboardDidHideNotification,
                                 UIDeviceOrientationDidChangeNotification};

double animationDuration(AnimationType type) {
  switch (type) {
    case AnimationType::systemActivityIndicator: return 0;
    case AnimationType::multipleCircleScaleRipple: return 1.25;
    case AnimationType::lineSpinFade: return 1.2;
    case AnimationType::circleRotateChase: return 1.5;
    case AnimationType::circleStrokeSpin: return 1.7;
    default: return 1.0;
  }
}

// The first window, or a new one when the application has none.
std::shared_ptr<UIWindow> firstWindow() {
  auto windows = UIApplication::sharedApplication().windows();
  if (!windows.empty()) return windows.front();
  return std::make_shared<UIWindow>(UIScreen::mainScreen().bounds());
}

std::shared_ptr<UIView> subviewOfClass(const UIView& parent, std::string_view name) {
  for (const auto& sub : parent.subviews()) {
    if (name == sub->className()) return sub;
  }
  return nullptr;
}

// The height of the keyboard's host view, found by the platform's private class names.
double searchedKeyboardHeight() {
  for (const auto& window : UIApplication::sharedApplication().windows()) {
    if (std::string_view(window->className()) != "UIRemoteKeyboardWindow") continue;
    auto container = subviewOfClass(*window, "UIInputSetContainerView");
    auto host = container ? subviewOfClass(*container, "UIInputSetHostView") : nullptr;
    if (host) return host->frame().height();
  }
  return 0;
}

size_t characterCount(const std::string& text) {
  size_t n = 0;
  for (unsigned char c : text) n += (c & 0xC0) != 0x80;
  return n;
}

void centre(UIView& view, CGPoint point) {
  CGRect f = view.frame();
  view.setFrame(CGRectMake(point.x - f.width() / 2, point.y - f.height() / 2, f.width(), f.height()));
}

}  // namespace

ProgressHUD::ProgressHUD() : UIView(UIScreen::mainScreen().bounds()) { setAlpha(0.0); }

std::shared_ptr<ProgressHUD> ProgressHUD::shared() { return SharedInstance<ProgressHUD>::get(); }

#define NIMBREL_HUD_SETTING(Type, Getter, Setter, field) \
  Type ProgressHUD::Getter() { return shared()->field; }  \
  void ProgressHUD::Setter(Type value) { shared()->field = value; }
NIMBREL_HUD_SETTING(AnimationType, animationType, setAnimationType, animationType_)
NIMBREL_HUD_SETTING(UIColor, colorBackground, setColorBackground, colorBackground_)
NIMBREL_HUD_SETTING(UIColor, colorHUD, setColorHUD, colorHUD_)
NIMBREL_HUD_SETTING(UIColor, colorStatus, setColorStatus, colorStatus_)
NIMBREL_HUD_SETTING(UIColor, colorAnimation, setColorAnimation, colorAnimation_)
NIMBREL_HUD_SETTING(UIColor, colorProgress, setColorProgress, colorProgress_)
NIMBREL_HUD_SETTING(UIFont, fontStatus, setFontStatus, fontStatus_)
NIMBREL_HUD_SETTING(UIImage, imageSuccess, setImageSuccess, imageSuccess_)
NIMBREL_HUD_SETTING(UIImage, imageError, setImageError, imageError_)
#undef NIMBREL_HUD_SETTING

double ProgressHUD::hideDelay(const std::string& text) { return static_cast<double>(characterCount(text)) * 0.03 + 1.25; }

// ---- Class operations ----

void ProgressHUD::show(std::optional<std::string> status, bool interaction) {
  post({std::move(status), std::nullopt, false, AnimatedIcon::none, std::nullopt, false, interaction, std::nullopt});
}

void ProgressHUD::show(std::optional<std::string> status, AlertIcon icon, bool interaction) {
  Request request{std::move(status), std::nullopt, true, AnimatedIcon::none,
                  UIImage::systemImageNamed(alertIconImageName(icon)), true, interaction, std::nullopt};
  request.tint = colorAnimation();
  post(std::move(request));
}

void ProgressHUD::show(std::optional<std::string> status, AnimatedIcon icon, bool interaction) {
  post({std::move(status), std::nullopt, true, icon, std::nullopt, true, interaction, std::nullopt});
}

void ProgressHUD::showSucceed(std::optional<std::string> status, std::optional<UIImage> image, bool interaction) {
  Request request{std::move(status), std::nullopt, true, AnimatedIcon::none, image ? image : imageSuccess(), true, interaction, std::nullopt};
  if (!image) request.tint = UIColor::systemGreenColor();
  post(std::move(request));
}

void ProgressHUD::showFailed(std::optional<std::string> status, std::optional<UIImage> image, bool interaction) {
  Request request{std::move(status), std::nullopt, true, AnimatedIcon::none, image ? image : imageError(), true, interaction, std::nullopt};
  if (!image) request.tint = UIColor::systemRedColor();
  post(std::move(request));
}

void ProgressHUD::showSucceed(std::optional<std::string> status, bool interaction) {
  show(std::move(status), AnimatedIcon::succeed, interaction);
}

void ProgressHUD::showFailed(std::optional<std::string> status, bool interaction) {
  show(std::move(status), AnimatedIcon::failed, interaction);
}

void ProgressHUD::showAdded(std::optional<std::string> status, bool interaction) {
  show(std::move(status), AnimatedIcon::added, interaction);
}

void ProgressHUD::showProgress(double progress, bool interaction) {
  post({std::nullopt, progress, false, AnimatedIcon::none, std::nullopt, false, interaction, std::nullopt});
}

void ProgressHUD::showProgress(std::optional<std::string> status, double progress, bool interaction) {
  post({std::move(status), progress, false, AnimatedIcon::none, std::nullopt, false, interaction, std::nullopt});
}

void ProgressHUD::dismiss() {
  DispatchQueue::main().async([] { shared()->hide(); });
}

void ProgressHUD::remove() {
  DispatchQueue::main().async([] { shared()->removeViews(); });
}

void ProgressHUD::post(Request request) {
  DispatchQueue::main().async([request = std::move(request)] { shared()->setup(request); });
}

// ---- The show routine ----

void ProgressHUD::setup(const Request& request) {
  if (!viewBackground) observeNotifications();
  setupBackground(request.interaction);
  setupToolbar();
  setupLabel(request.status);
  setupContent(request);
  setupSize();
  setupPosition(nullptr);
  if (timer) timer->invalidate();
  timer.reset();
  if (alpha() != 1.0) {
    setAlpha(1.0);
    toolbarHUD->setAlpha(0.0);
    toolbarHUD->setTransformScale(1.4);
    auto card = toolbarHUD;
    // Both scales are absolute: the card comes to rest at 1/1.4, not at 1.
    UIView::animateWithDuration(0.15, [card] {
      card->setTransformScale(1 / 1.4);
      card->setAlpha(1.0);
    });
  }
  didChange();
  if (request.hides) {
    double delay = hideDelay(labelStatus->text().value_or(std::string()));
    std::weak_ptr<ProgressHUD> weak = strongSelf<ProgressHUD>();
    timer = NSTimer::scheduledTimerWithTimeInterval(delay, false, [weak](NSTimer&) {
      if (auto self = weak.lock()) self->hide();
    });
  }
}

void ProgressHUD::observeNotifications() {
  std::weak_ptr<ProgressHUD> weak = strongSelf<ProgressHUD>();
  for (const char* name : kObserved) {
    NSNotificationCenter::defaultCenter().addObserver(weakSelf<NSObject>(), name, {},
                                                      [weak](const NSNotification& n) {
                                                        if (auto self = weak.lock()) self->setupPosition(&n);
                                                      });
  }
}

void ProgressHUD::setupBackground(bool interaction) {
  if (!viewBackground) {
    viewBackground = std::make_shared<UIView>(bounds());
    firstWindow()->addSubview(viewBackground);
  }
  viewBackground->setBackgroundColor(interaction ? UIColor::clearColor() : colorBackground_);
  viewBackground->setUserInteractionEnabled(!interaction);
}

void ProgressHUD::setupToolbar() {
  if (!toolbarHUD) {
    toolbarHUD = std::make_shared<UIToolbar>(CGRectMake(0, 0, 0, 0));
    toolbarHUD->setTranslucent(true);
    toolbarHUD->setClipsToBounds(true);
    toolbarHUD->updateLayer([](CALayer& layer) {
      layer.cornerRadius = 10.0;
      layer.masksToBounds = true;
    });
    viewBackground->addSubview(toolbarHUD);
  }
  toolbarHUD->setBackgroundColor(colorHUD_);
}

void ProgressHUD::setupLabel(const std::optional<std::string>& status) {
  if (!labelStatus) {
    labelStatus = std::make_shared<UILabel>(CGRectMake(0, 0, 0, 0));
    labelStatus->setTextAlignment(NSTextAlignment::center);
    labelStatus->setNumberOfLines(0);
    toolbarHUD->addSubview(labelStatus);
  }
  labelStatus->setText(status && !status->empty() ? status : std::nullopt);
  labelStatus->setFont(fontStatus_);
  labelStatus->setTextColor(colorStatus_);
  labelStatus->setHidden(!status);
}

void ProgressHUD::setupContent(const Request& request) {
  auto take = [](auto& view) {
    if (view) view->removeFromSuperview();
  };
  if (request.progress) {
    take(viewAnimation), take(viewAnimatedIcon), take(staticImageView);
    if (!viewProgress) viewProgress = std::make_shared<ProgressView>(CGRectMake(0, 0, 70, 70));
    if (!viewProgress->superview()) toolbarHUD->addSubview(viewProgress);
    viewProgress->setColor(colorProgress_);
    viewProgress->set(*request.progress, 0.2);
    return;
  }
  if (!request.still) {
    take(viewProgress), take(viewAnimatedIcon), take(staticImageView);
    if (!viewAnimation) viewAnimation = std::make_shared<HUDFigureView>(CGRectMake(0, 0, 60, 60));
    if (!viewAnimation->superview()) toolbarHUD->addSubview(viewAnimation);
    viewAnimation->clear();
    if (animationType_ == AnimationType::systemActivityIndicator) {
      spinner_ = std::make_shared<UIActivityIndicatorView>(101);
      spinner_->setFrame(viewAnimation->bounds());
      spinner_->hidesWhenStopped = true;
      spinner_->setTransformScale(1.6);
      spinner_->setTintColor(colorAnimation_);
      viewAnimation->addSubview(spinner_);
      spinner_->startAnimating();
    }
    viewAnimation->show(animationTypeName(animationType_), colorAnimation_, animationDuration(animationType_), true);
    return;
  }
  if (request.animatedIcon != AnimatedIcon::none) {
    take(viewProgress), take(viewAnimation), take(staticImageView);
    if (!viewAnimatedIcon) viewAnimatedIcon = std::make_shared<HUDFigureView>(CGRectMake(0, 0, 60, 60));
    if (!viewAnimatedIcon->superview()) toolbarHUD->addSubview(viewAnimatedIcon);
    viewAnimatedIcon->clear();
    viewAnimatedIcon->show(animatedIconName(request.animatedIcon), colorAnimation_, 0.5, false);
    return;
  }
  take(viewProgress), take(viewAnimation), take(viewAnimatedIcon);
  if (!staticImageView) staticImageView = std::make_shared<UIImageView>(CGRectMake(0, 0, 60, 60));
  if (!staticImageView->superview()) toolbarHUD->addSubview(staticImageView);
  staticImageView->setImage(request.image);
  staticImageView->setTintColor(request.tint);
  staticImageView->setContentMode(UIViewContentMode::scaleAspectFit);
}

void ProgressHUD::setupSize() {
  CGRect card{{0, 0}, {120, 120}};
  bool hasText = labelStatus->text().has_value();
  if (hasText) {
    CGSize line = TextMeasurer::current().measure(*labelStatus->text(), labelStatus->font());
    // The text wraps inside a 250-point square.
    double lines = std::max(1.0, std::ceil(line.width / 250.0));
    CGSize text{std::min(line.width, 250.0), std::min(line.height * lines, 250.0)};
    card.size.height = std::ceil(text.height) + 120.0;
    card.size.width = std::max(std::ceil(text.width) + 60.0, 120.0);
    labelStatus->setFrame(CGRectMake((card.width() - text.width) / 2, (card.height() - text.height) * 0.5 + 45.0,
                                     text.width, text.height));
  }
  toolbarHUD->setFrame(card);
  CGPoint content{card.width() * 0.5, hasText ? 55.0 : card.height() * 0.5};
  for (UIView* view : {static_cast<UIView*>(viewProgress.get()), static_cast<UIView*>(viewAnimation.get()),
                       static_cast<UIView*>(viewAnimatedIcon.get()), static_cast<UIView*>(staticImageView.get())}) {
    if (view && view->superview()) centre(*view, content);
  }
}

void ProgressHUD::setupPosition(const NSNotification* notification) {
  double duration = 0, keyboard = 0;
  if (notification) {
    auto& info = notification->userInfo;
    if (auto it = info.find(UIKeyboardAnimationDurationUserInfoKey); it != info.end()) {
      if (auto d = std::any_cast<double>(&it->second)) duration = *d;
    }
    if (auto it = info.find(UIKeyboardFrameEndUserInfoKey); it != info.end()) {
      if (auto r = std::any_cast<CGRect>(&it->second)) keyboard = r->height();
    }
    const std::string& name = notification->name;
    if (name == UIKeyboardWillHideNotification || name == UIKeyboardDidHideNotification) {
      keyboard = 0;
    } else if (name != UIKeyboardWillShowNotification && name != UIKeyboardDidShowNotification) {
      keyboard = searchedKeyboardHeight();
    }
  } else {
    keyboard = searchedKeyboardHeight();
  }
  CGRect screen = firstWindow()->bounds();
  auto card = toolbarHUD;
  auto backdrop = viewBackground;
  UIView::animateWithDuration(duration, [=] {
    if (card) centre(*card, {screen.width() * 0.5, (screen.height() - keyboard) * 0.5});
    if (backdrop) backdrop->setFrame(screen);
  });
  didChange();
}

// ---- Hide and remove ----

void ProgressHUD::hide() {
  if (alpha() != 1.0 || !toolbarHUD) return;
  auto card = toolbarHUD;
  std::weak_ptr<ProgressHUD> weak = strongSelf<ProgressHUD>();
  UIView::animateWithDuration(
      0.15,
      [card] {
        card->setTransformScale(0.3);
        card->setAlpha(0.0);
      },
      [weak](bool) {
        if (auto self = weak.lock()) self->removeViews();
      });
  didChange();
}

void ProgressHUD::removeViews() {
  NSNotificationCenter::defaultCenter().removeObserver(this);
  if (timer) timer->invalidate();
  timer.reset();
  auto drop = [](auto& view) {
    if (view) view->removeFromSuperview();
    view.reset();
  };
  drop(staticImageView);
  drop(viewAnimatedIcon);
  drop(viewAnimation);
  drop(viewProgress);
  drop(labelStatus);
  drop(toolbarHUD);
  drop(viewBackground);
  spinner_.reset();
  setAlpha(0.0);
  didChange();
}

// ---- The kit's waiting state ----

void loadingOverlay() {
  if (auto window = UIApplication::sharedApplication().keyWindow()) window->setUserInteractionEnabled(false);
  ProgressHUD::setAnimationType(AnimationType::systemActivityIndicator);
  ProgressHUD::setColorAnimation(UIColorCatalog::colorNamed("AppColor").value_or(UIColor::blackColor()));
  ProgressHUD::show(std::nullopt, true);
}

}  // namespace nimbrel
