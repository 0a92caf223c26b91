#include "platform/av/AVPlayer.h"

#include <algorithm>
#include <cmath>
#include <mutex>

#include "platform/av/MediaDurations.h"
#include "platform/av/MediaURL.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/NSNotificationCenter.h"
#include "platform/foundation/RunLoop.h"

namespace {
std::mutex gMutex;
std::vector<std::weak_ptr<AVPlayer>>& registry() {
  static std::vector<std::weak_ptr<AVPlayer>> r;
  return r;
}
}  // namespace

AVPlayer::AVPlayer(const URL& url)
    : item_(std::make_shared<AVPlayerItem>(url, MediaDurations::current()->durationOfFile(mediaFilePath(url)))) {}

AVPlayer::~AVPlayer() = default;

std::shared_ptr<AVPlayer> AVPlayer::playerWithURL(const URL& url) {
  auto player = std::make_shared<AVPlayer>(url);
  std::lock_guard lock(gMutex);
  std::erase_if(registry(), [](const auto& w) { return w.expired(); });
  registry().push_back(player);
  return player;
}

std::vector<std::shared_ptr<AVPlayer>> AVPlayer::livePlayers() {
  std::lock_guard lock(gMutex);
  std::vector<std::shared_ptr<AVPlayer>> out;
  for (const auto& w : registry()) {
    if (auto p = w.lock()) out.push_back(std::move(p));
  }
  return out;
}

double AVPlayer::currentTime() const {
  if (!playing_) return position_;
  double t = startPosition_ + (RunLoop::current().now() - startedAt_);
  double duration = item_->durationSeconds();
  return std::isnan(duration) ? t : std::min(t, duration);
}

void AVPlayer::play() {
  if (playing_) return;
  double duration = item_->durationSeconds();
  if (!std::isnan(duration) && position_ >= duration) return;  // at the end it stays there
  playing_ = true;
  startedAt_ = RunLoop::current().now();
  startPosition_ = position_;
  scheduleEnd();
}

void AVPlayer::pause() {
  if (!playing_) return;
  position_ = currentTime();
  playing_ = false;
  ++generation_;
}

void AVPlayer::seekToTime(double seconds) {
  bool wasPlaying = playing_;
  if (wasPlaying) pause();
  double duration = item_->durationSeconds();
  position_ = std::max(0.0, std::isnan(duration) ? seconds : std::min(seconds, duration));
  if (wasPlaying) play();
}

void AVPlayer::scheduleEnd() {
  double duration = item_->durationSeconds();
  if (std::isnan(duration)) return;
  unsigned generation = ++generation_;
  std::weak_ptr<AVPlayer> weak = strongSelf<AVPlayer>();
  DispatchQueue::main().asyncAfter(duration - startPosition_, [weak, generation] {
    auto self = weak.lock();
    if (!self || self->generation_ != generation || !self->playing_) return;
    self->position_ = self->item_->durationSeconds();
    self->playing_ = false;
    NSNotificationCenter::defaultCenter().postNotification({AVPlayerItemDidPlayToEndTimeNotification, self->item_, {}});
  });
}
