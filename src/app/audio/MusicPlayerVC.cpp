#include "app/audio/MusicPlayerVC.h"

#include <cmath>
#include <cstdio>

#include "app/core/Constant.h"
#include "platform/av/AVAsset.h"
#include "platform/coreimage/CIContext.h"
#include "platform/coreimage/CIFilter.h"
#include "platform/foundation/FatalError.h"
#include "platform/uikit/UINavigationController.h"

namespace nimbrel {

namespace {

constexpr const char* kFile = "Nimbrel/MusicPlayerVC";
constexpr const char* kNil = "Unexpectedly found nil while unwrapping an Optional value";

long wholeSeconds(double seconds, const char* what) {
  double whole = std::trunc(seconds);
  if (!std::isfinite(whole)) {
    fatalError(std::string(what) + " value cannot be converted to Int because it is either infinite or NaN", kFile, 0);
  }
  if (whole < -9223372036854775808.0 || whole >= 9223372036854775808.0) {
    fatalError(std::string(what) + " value cannot be converted to Int because it is outside the representable range",
               kFile, 0);
  }
  return static_cast<long>(whole);
}

}  // namespace

MusicPlayerVC::MusicPlayerVC() {
  using Sender = const std::shared_ptr<NSObject>&;
  auto bind = [this](const char* selector, void (MusicPlayerVC::*method)(Sender)) {
    registerAction(selector, [this, method](Sender sender) { (this->*method)(sender); });
  };
  bind("sliderValueChange:", &MusicPlayerVC::sliderValueChange);
  bind("btnPlay:", &MusicPlayerVC::btnPlay);
  bind("btnLessTime:", &MusicPlayerVC::btnLessTime);
  bind("btnAddTime:", &MusicPlayerVC::btnAddTime);
  bind("btnClose:", &MusicPlayerVC::btnClose);
  bind("backAction:", &MusicPlayerVC::backAction);
  registerAction("updateTimer", [this](Sender) { updateTimer(); });
}

std::string MusicPlayerVC::timeText(long s) {
  char text[64];
  if (s > 3599 || s < -3599) {
    std::snprintf(text, sizeof text, "%.2ld:%.2ld:%.2ld", s / 3600, (s / 60) % 60, s % 60);
  } else {
    std::snprintf(text, sizeof text, "%.2ld:%.2ld", (s / 60) % 60, s % 60);
  }
  return text;
}

void MusicPlayerVC::viewDidLoad() {
  UIViewController::viewDidLoad();
  CGSize size = view()->frame().size;
  if (!song) song = std::make_shared<MPMediaItem>(std::make_shared<MPMediaItemRecord>());
  if (!song->artwork()) {
    ivSongBanner->setImage(Constant::musicPlaceholder());
    ivBg->setImage(UIImage::withPixels({}));
  } else {
    loadArtwork(size);
  }
  ivSongBanner->updateLayer([](CALayer& layer) {
    layer.borderWidth = 1.0;
    layer.borderColor = UIColor::whiteColor();
  });
  auto url = song->assetURL();
  if (!url) fatalError(kNil, kFile, 0);
  auto asset = AVURLAsset::assetWithURL(*url);
  player = AVPlayer::playerWithURL(*url);
  TotalSeconds = wholeSeconds(asset->durationSeconds(), "Double");
  sliderOutlet->setMinimumValue(0);
  sliderOutlet->setMaximumValue(static_cast<float>(TotalSeconds));
  sliderOutlet->setValue(0, true);
  lblSongTitle->setText(song->title().value_or("Unknown"));
  lblArtist->setText(song->artist().value_or("Unknown"));
  player->play();
  scheduleTimer();
}

void MusicPlayerVC::loadArtwork(CGSize size) {
  auto image = song->artwork()->imageWithSize(size);
  if (!image) image = Constant::musicPlaceholder();
  // The backdrop is blurred once, here, before the screen shows.
  CIContext context(nullptr);
  auto input = CIImage::imageWithImage(*image);
  auto filter = CIFilter::filterWithName("CIGaussianBlur");
  if (!filter || !input) fatalError(kNil, kFile, 0);
  filter->setDefaults();
  filter->setValue(*input, kCIInputImageKey);
  auto output = filter->valueForKey(kCIOutputImageKey);
  if (!output) fatalError(kNil, kFile, 0);
  auto blurred = context.createCGImage(*output, output->extent());
  if (!blurred) fatalError(kNil, kFile, 0);
  ivBg->setImage(UIImage::withPixels(*blurred));
  ivSongBanner->setImage(image);
}

void MusicPlayerVC::viewDidLayoutSubviews() {
  double radius = ivSongBanner->frame().size.height / 2;
  ivSongBanner->updateLayer([radius](CALayer& layer) { layer.cornerRadius = radius; });
}

void MusicPlayerVC::viewWillAppear(bool) {
  if (auto nav = navigationController()) nav->setNavigationBarHidden(true, false);
}

void MusicPlayerVC::viewWillDisappear(bool) {
  if (auto nav = navigationController()) nav->setNavigationBarHidden(false, false);
}

void MusicPlayerVC::scheduleTimer() {
  auto self = strongSelf<MusicPlayerVC>();
  timer = NSTimer::scheduledTimerWithTimeInterval(1.0, true, [self](NSTimer&) { self->updateTimer(); });
}

void MusicPlayerVC::updateTimer() {
  long next = currentTime + 1;
  currentTime = next < TotalSeconds ? next : 0;
  lblTime->setText(timeText(currentTime));
  lblTotalTime->setText(timeText(TotalSeconds));
  sliderOutlet->setValue(static_cast<float>(currentTime), true);
}

void MusicPlayerVC::btnPlay(const std::shared_ptr<NSObject>&) {
  if (!isPlay) {
    isPlay = true;
    if (auto t = timer.lock()) t->invalidate();
    btnPlayOutlet->setImage(UIImage::named("play"));
    player->pause();
  } else {
    isPlay = false;
    btnPlayOutlet->setImage(UIImage::named("pause"));
    scheduleTimer();
    player->play();
  }
}

void MusicPlayerVC::btnLessTime(const std::shared_ptr<NSObject>&) {
  currentTime = std::max(currentTime - 15, 0L);
  afterJump();
}

void MusicPlayerVC::btnAddTime(const std::shared_ptr<NSObject>&) {
  currentTime = std::min(currentTime + 15, TotalSeconds);
  afterJump();
}

void MusicPlayerVC::afterJump() {
  lblTime->setText(timeText(currentTime));
  sliderOutlet->setValue(static_cast<float>(currentTime), false);
  player->seekToTime(std::trunc(sliderOutlet->value()));
  if (!isPlay) {
    player->play();
  } else {
    player->pause();
  }
}

void MusicPlayerVC::sliderValueChange(const std::shared_ptr<NSObject>& sender) {
  auto slider = std::dynamic_pointer_cast<UISlider>(sender);
  if (!slider) slider = sliderOutlet;
  currentTime = wholeSeconds(slider->value(), "Float");
  lblTime->setText(timeText(currentTime));
  player->seekToTime(std::trunc(sliderOutlet->value()));
  // Plays whatever `isPlay` says: during a pause the sound comes back under a standing counter.
  player->play();
}

void MusicPlayerVC::btnClose(const std::shared_ptr<NSObject>&) {
  player->pause();
  dismissViewControllerAnimated(true, nullptr);
}

void MusicPlayerVC::backAction(const std::shared_ptr<NSObject>&) {
  if (auto nav = navigationController()) nav->popViewControllerAnimated(true);
}

}  // namespace nimbrel
