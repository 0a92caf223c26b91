#include "shell/PlayerObject.h"

#include <cmath>

#include "platform/av/AVPlayer.h"
#include "platform/av/MediaURL.h"

namespace nimbrel::shell {

PlayerObject::PlayerObject(std::shared_ptr<AVPlayer> player, QObject* parent)
    : QObject(parent), player_(std::move(player)) {
  if (!player_) return;
  connect(&timer_, &QTimer::timeout, this, &PlayerObject::refresh);
  refresh();
}

QString PlayerObject::fileName() const {
  return player_ ? QString::fromStdString(player_->currentItem()->url().lastPathComponent()) : QString();
}

QString PlayerObject::url() const {
  return player_ ? QString::fromStdString(player_->currentItem()->url().absoluteString()) : QString();
}

QUrl PlayerObject::source() const {
  if (!player_) return {};
  std::string path = mediaFilePath(player_->currentItem()->url());
  return path.empty() ? QUrl() : QUrl::fromLocalFile(QString::fromStdString(path));
}

void PlayerObject::refresh() {
  if (!player_) return;
  bool playing = player_->isPlaying();
  double position = player_->currentTime();
  double length = player_->currentItem()->durationSeconds();
  double duration = std::isnan(length) ? -1 : length;
  timer_.start(playing ? kPlayingIntervalMs : kIdleIntervalMs);
  if (playing == playing_ && position == position_ && duration == duration_) return;
  playing_ = playing;
  position_ = position;
  duration_ = duration;
  Q_EMIT changed();
}

void PlayerObject::play() {
  if (!player_) return;
  player_->play();
  refresh();
}

void PlayerObject::pause() {
  if (!player_) return;
  player_->pause();
  refresh();
}

void PlayerObject::seek(double seconds) {
  if (!player_) return;
  player_->seekToTime(seconds);
  refresh();
}

QString PlayerObject::timeText(double seconds) {
  if (!std::isfinite(seconds)) return QStringLiteral("--:--");
  bool negative = seconds < 0;
  auto whole = static_cast<long long>(std::floor(std::abs(seconds) + 1e-6));
  long long h = whole / 3600, m = (whole / 60) % 60, s = whole % 60;
  QString text = h > 0 ? QStringLiteral("%1:%2:%3").arg(h).arg(m, 2, 10, QLatin1Char('0')).arg(s, 2, 10, QLatin1Char('0'))
                       : QStringLiteral("%1:%2").arg(m).arg(s, 2, 10, QLatin1Char('0'));
  return negative ? QLatin1Char('-') + text : text;
}

}  // namespace nimbrel::shell
