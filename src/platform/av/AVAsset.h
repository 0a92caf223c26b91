#pragma once

#include <memory>

#include "platform/foundation/NSObject.h"
#include "platform/foundation/URL.h"

// Timed media. Its duration is indefinite (NaN) when the media cannot be read.
class AVAsset : public NSObject {
 public:
  explicit AVAsset(double durationSeconds = 0) : duration_(durationSeconds) {}
  double durationSeconds() const { return duration_; }

 private:
  double duration_;
};

// Media at a URL: the only kind that can be copied out or played from its file.
class AVURLAsset : public AVAsset {
 public:
  explicit AVURLAsset(URL url, double durationSeconds = 0) : AVAsset(durationSeconds), url_(std::move(url)) {}
  // The media at `url`, its duration read from the file behind it (indefinite when unreadable).
  static std::shared_ptr<AVURLAsset> assetWithURL(const URL& url);
  const URL& url() const { return url_; }

 private:
  URL url_;
};

// Media assembled from parts, with no single file behind it.
class AVComposition : public AVAsset {
 public:
  using AVAsset::AVAsset;
};
