#include "platform/libs/SVProgressHUD.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

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
  // Completions of the fades in flight. A later fade takes the earlier ones over (the library's
  // interrupted fade-out animation still completes); only a show drops them.
  std::vector<SVProgressHUD::Completion> fadeCompletions;
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

bool selfDismissing(SVProgressHUD::Kind kind) {
  return kind == SVProgressHUD::Kind::info || kind == SVProgressHUD::Kind::success ||
         kind == SVProgressHUD::Kind::error || kind == SVProgressHUD::Kind::image;
}

void present(SVProgressHUD::Kind kind, std::optional<std::string> status, float progress,
             std::optional<UIImage> image) {
  // The library works the display time out when it is asked, not when the overlay appears.
  std::optional<double> duration;
  if (selfDismissing(kind)) duration = SVProgressHUD::displayDurationForString(status);
  DispatchQueue::main().async([=] {
    auto& m = model();
    unsigned long generation = ++m.showGeneration;
    ++m.fadeGeneration;  // a show cancels a fade in flight, and its completions with it
    m.fadeCompletions.clear();
    m.state = SVProgressHUD::State{true, kind, status, progress, image, false};
    m.changed.emit();
    if (!duration) return;
    DispatchQueue::main().asyncAfter(*duration, [generation] {
      if (model().showGeneration != generation) return;
      startFadeOut(nullptr);
    });
  });
}

void startFadeOut(SVProgressHUD::Completion completion) {
  auto& m = model();
  unsigned long fade = ++m.fadeGeneration;
  if (completion) m.fadeCompletions.push_back(std::move(completion));
  // Fading an overlay that is not there shows nothing, but still takes the animation's time.
  if (m.state.visible && !m.state.fadingOut) {
    m.state.fadingOut = true;
    m.changed.emit();
  }
  DispatchQueue::main().asyncAfter(SVProgressHUD::kFadeOutAnimationDuration, [fade] {
    auto& mm = model();
    if (mm.fadeGeneration != fade) return;  // a new show or a later fade took over
    bool wasVisible = mm.state.visible;
    mm.state = SVProgressHUD::State{};
    auto completions = std::exchange(mm.fadeCompletions, {});
    if (wasVisible) mm.changed.emit();
    for (auto& c : completions) c();
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
  m.fadeCompletions.clear();
  m.changed = ChangeSignal{};
}
