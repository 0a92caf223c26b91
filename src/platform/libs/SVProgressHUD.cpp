#include "platform/libs/SVProgressHUD.h"

#include <algorithm>
#include <limits>
#include <memory>

#include "platform/foundation/DispatchQueue.h"

namespace {

struct Model {
  SVProgressHUD::Style style = SVProgressHUD::Style::light;
  SVProgressHUD::MaskType mask = SVProgressHUD::MaskType::none;
  double minimumDismiss = 5.0;
  double maximumDismiss = std::numeric_limits<double>::max();
  SVProgressHUD::State state;
  // Bumped by every show: a pending self-dismiss timer or fade belongs to one generation.
  unsigned long showGeneration = 0;
  unsigned long fadeGeneration = 0;
  ChangeSignal changed;
};

Model& model() {
  static Model m;
  return m;
}

size_t utf16Length(const std::string& s) {
  size_t n = 0;
  for (size_t i = 0; i < s.size();) {
    auto c = static_cast<unsigned char>(s[i]);
    size_t len = c < 0x80 ? 1 : (c >> 5) == 0x6 ? 2 : (c >> 4) == 0xE ? 3 : 4;
    n += len == 4 ? 2 : 1;
    i += len;
  }
  return n;
}

void startFadeOut(SVProgressHUD::Completion completion);

void present(SVProgressHUD::Kind kind, std::optional<std::string> status, float progress,
             std::optional<UIImage> image) {
  DispatchQueue::main().async([=] {
    auto& m = model();
    unsigned long generation = ++m.showGeneration;
    ++m.fadeGeneration;  // a show cancels a fade in flight
    m.state = SVProgressHUD::State{true, kind, status, progress, image, false};
    m.changed.emit();
    bool selfDismissing = kind == SVProgressHUD::Kind::info || kind == SVProgressHUD::Kind::success ||
                          kind == SVProgressHUD::Kind::error || kind == SVProgressHUD::Kind::image;
    if (!selfDismissing) return;
    double duration = SVProgressHUD::displayDurationForString(status);
    DispatchQueue::main().asyncAfter(duration, [generation] {
      if (model().showGeneration != generation) return;
      startFadeOut(nullptr);
    });
  });
}

void startFadeOut(SVProgressHUD::Completion completion) {
  auto& m = model();
  unsigned long fade = ++m.fadeGeneration;
  m.state.fadingOut = true;
  m.changed.emit();
  DispatchQueue::main().asyncAfter(SVProgressHUD::kFadeOutAnimationDuration, [fade, completion] {
    auto& mm = model();
    if (mm.fadeGeneration != fade) return;  // interrupted by a new show
    mm.state = SVProgressHUD::State{};
    mm.changed.emit();
    if (completion) completion();
  });
}

}  // namespace

void SVProgressHUD::setDefaultStyle(Style style) { model().style = style; }
void SVProgressHUD::setDefaultMaskType(MaskType mask) { model().mask = mask; }
void SVProgressHUD::setMinimumDismissTimeInterval(double s) { model().minimumDismiss = s; }
void SVProgressHUD::setMaximumDismissTimeInterval(double s) { model().maximumDismiss = s; }
SVProgressHUD::Style SVProgressHUD::defaultStyle() { return model().style; }
SVProgressHUD::MaskType SVProgressHUD::defaultMaskType() { return model().mask; }
double SVProgressHUD::minimumDismissTimeInterval() { return model().minimumDismiss; }

void SVProgressHUD::show() { present(Kind::status, std::nullopt, -1, std::nullopt); }
void SVProgressHUD::showWithStatus(std::optional<std::string> status) {
  present(Kind::status, std::move(status), -1, std::nullopt);
}
void SVProgressHUD::showProgress(float progress, std::optional<std::string> status) {
  present(Kind::progress, std::move(status), progress, std::nullopt);
}
void SVProgressHUD::showInfoWithStatus(std::optional<std::string> status) {
  present(Kind::info, std::move(status), -1, UIImage::named("info"));
}
void SVProgressHUD::showSuccessWithStatus(std::optional<std::string> status) {
  present(Kind::success, std::move(status), -1, UIImage::named("success"));
}
void SVProgressHUD::showErrorWithStatus(std::optional<std::string> status) {
  present(Kind::error, std::move(status), -1, UIImage::named("error"));
}
void SVProgressHUD::showImage(UIImage image, std::optional<std::string> status) {
  present(Kind::image, std::move(status), -1, std::move(image));
}

void SVProgressHUD::dismiss() { dismissWithDelay(0, nullptr); }
void SVProgressHUD::dismissWithCompletion(Completion completion) {
  dismissWithDelay(0, std::move(completion));
}
void SVProgressHUD::dismissWithDelay(double delay) { dismissWithDelay(delay, nullptr); }

void SVProgressHUD::dismissWithDelay(double delay, Completion completion) {
  DispatchQueue::main().async([delay, completion = std::move(completion)]() mutable {
    DispatchQueue::main().asyncAfter(delay, [completion = std::move(completion)] {
      startFadeOut(completion);
    });
  });
}

bool SVProgressHUD::isVisible() { return model().state.visible; }

double SVProgressHUD::displayDurationForString(const std::optional<std::string>& status) {
  auto& m = model();
  double length = status ? static_cast<double>(utf16Length(*status)) : 0.0;
  double minimum = std::max(length * 0.06 + 0.5, m.minimumDismiss);
  return std::min(minimum, m.maximumDismiss);
}

SVProgressHUD::State SVProgressHUD::state() { return model().state; }
ChangeSignal& SVProgressHUD::changed() { return model().changed; }

void SVProgressHUD::reset() {
  auto& m = model();
  m.style = Style::light;
  m.mask = MaskType::none;
  m.minimumDismiss = 5.0;
  m.maximumDismiss = std::numeric_limits<double>::max();
  m.state = State{};
  ++m.showGeneration;
  ++m.fadeGeneration;
}
