#include "platform/foundation/NSTimer.h"

#include <algorithm>

#include "platform/foundation/DispatchQueue.h"

NSTimer::NSTimer(TimeInterval interval, bool repeats, Block block)
    // The platform clamps intervals to a small positive minimum.
    : interval_(std::max(interval, 0.0001)), repeats_(repeats), block_(std::move(block)) {}

std::shared_ptr<NSTimer> NSTimer::scheduledTimerWithTimeInterval(TimeInterval interval,
                                                                 bool repeats, Block block) {
  auto timer = std::make_shared<NSTimer>(interval, repeats, std::move(block));
  timer->fireDate_ = Date::now().addingTimeInterval(timer->interval_);
  timer->schedule();
  return timer;
}

void NSTimer::schedule() {
  double delay = fireDate_.timeIntervalSinceDate(Date::now());
  unsigned generation = ++generation_;
  DispatchQueue::main().asyncAfter(delay, [self = shared_from_this(), generation] {
    if (!self->valid_ || generation != self->generation_) return;
    if (self->repeats_) {
      // The next fire keeps to the schedule, not to when this one ran.
      self->fireDate_ = self->fireDate_.addingTimeInterval(self->interval_);
      self->schedule();
    } else {
      self->valid_ = false;
    }
    self->block_(*self);
  });
}

void NSTimer::invalidate() {
  valid_ = false;
  ++generation_;
}

void NSTimer::fire() {
  if (!valid_) return;
  if (!repeats_) {
    valid_ = false;
    ++generation_;
  }
  block_(*this);
}
