#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "platform/foundation/NSObject.h"
#include "platform/foundation/URL.h"

inline constexpr const char* AVPlayerItemDidPlayToEndTimeNotification = "AVPlayerItemDidPlayToEndTimeNotification";

// The media item a player plays: its URL and duration (NaN when unreadable).
class AVPlayerItem : public NSObject {
 public:
  AVPlayerItem(URL url, double duration) : url_(std::move(url)), duration_(duration) {}
  const URL& url() const { return url_; }
  double durationSeconds() const { return duration_; }

 private:
  URL url_;
  double duration_;
};

// A player on the run loop's clock: its position moves while it plays, and at the end of the item
// it stops there and the end notification is posted on the main queue.
class AVPlayer : public NSObject {
 public:
  explicit AVPlayer(const URL& url);
  ~AVPlayer() override;
  static std::shared_ptr<AVPlayer> playerWithURL(const URL& url);

  void play();
  void pause();
  void seekToTime(double seconds);
  double currentTime() const;
  std::shared_ptr<AVPlayerItem> currentItem() const { return item_; }
  bool isPlaying() const { return playing_; }
  double rate() const { return playing_ ? 1.0 : 0.0; }

  // Every live player, for scripts and the shell.
  static std::vector<std::shared_ptr<AVPlayer>> livePlayers();

 private:
  void scheduleEnd();
  std::shared_ptr<AVPlayerItem> item_;
  bool playing_ = false;
  double position_ = 0;     // while paused
  double startedAt_ = 0;    // run-loop moment of the last play
  double startPosition_ = 0;
  unsigned generation_ = 0;
};
