#pragma once

#include <functional>
#include <memory>

#include "platform/foundation/Date.h"

// A timer on the main run loop. The loop keeps a valid timer alive; `invalidate` stops it.
class NSTimer : public std::enable_shared_from_this<NSTimer> {
 public:
  using Block = std::function<void(NSTimer&)>;

  static std::shared_ptr<NSTimer> scheduledTimerWithTimeInterval(TimeInterval interval, bool repeats,
                                                                 Block block);
  void invalidate();
  bool isValid() const { return valid_; }
  // Runs the block now; a non-repeating timer is then invalid.
  void fire();
  TimeInterval timeInterval() const { return interval_; }
  Date fireDate() const { return fireDate_; }

  NSTimer(TimeInterval interval, bool repeats, Block block);  // use scheduledTimer...

 private:
  void schedule();
  TimeInterval interval_;
  bool repeats_;
  Block block_;
  bool valid_ = true;
  Date fireDate_;
  unsigned generation_ = 0;
};
