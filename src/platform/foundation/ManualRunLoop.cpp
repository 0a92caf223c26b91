#include "platform/foundation/ManualRunLoop.h"

#include <algorithm>
#include <cmath>

#include "platform/foundation/FatalError.h"

namespace {
// A loop that never settles is a bug in the code under test; stop it loudly instead of hanging.
constexpr std::uint64_t kMaxTasksPerSettle = 50'000'000;
// About 73 years: far enough for "never", small enough that a sum of two cannot overflow.
constexpr std::int64_t kMaxTicks = std::int64_t{1} << 61;

std::int64_t later(std::int64_t now, std::int64_t delay) {
  return std::min(now + delay, kMaxTicks);
}
}  // namespace

ManualRunLoop::Ticks ManualRunLoop::toTicks(double seconds) {
  if (!(seconds > 0)) return 0;  // negative and NaN delays mean "now"
  double ns = seconds * 1e9;
  if (ns >= static_cast<double>(kMaxTicks)) return kMaxTicks;
  return std::llround(ns);
}

ManualRunLoop::ManualRunLoop(double start) : start_(start), previous_(RunLoop::install(this)) {}

ManualRunLoop::~ManualRunLoop() {
  RunLoop::install(previous_);
}

double ManualRunLoop::now() const {
  std::lock_guard lock(mutex_);
  return start_ + toSeconds(now_);
}

double ManualRunLoop::elapsed() const {
  std::lock_guard lock(mutex_);
  return toSeconds(now_);
}

void ManualRunLoop::postMain(Task task, double delay) {
  std::lock_guard lock(mutex_);
  Ticks due = later(now_, toTicks(delay));
  main_.emplace(std::make_pair(due, seq_++), std::move(task));
}

void ManualRunLoop::postBackground(Task task, QualityOfService qos) {
  std::lock_guard lock(mutex_);
  background_.emplace_back(qos, std::move(task));
}

bool ManualRunLoop::isMainThread() const {
  std::lock_guard lock(mutex_);
  return backgroundDepth_ == 0;
}

bool ManualRunLoop::runOneDueMainTask() {
  Task task;
  {
    std::lock_guard lock(mutex_);
    if (main_.empty() || main_.begin()->first.first > now_) return false;
    task = std::move(main_.begin()->second);
    main_.erase(main_.begin());
  }
  task();
  return true;
}

bool ManualRunLoop::runOneBackgroundTask() {
  {
    std::lock_guard lock(mutex_);
    if (background_.empty()) return false;
  }
  runBackgroundTask(0);
  return true;
}

void ManualRunLoop::runMainUntilIdle() {
  std::uint64_t count = 0;
  while (runOneDueMainTask()) {
    if (++count > kMaxTasksPerSettle) fatalError("ManualRunLoop: main queue never became idle");
  }
}

void ManualRunLoop::runUntilIdle() {
  std::uint64_t count = 0;
  for (;;) {
    bool ran = runOneDueMainTask() || runOneBackgroundTask();
    if (!ran) return;
    if (++count > kMaxTasksPerSettle) fatalError("ManualRunLoop: never became idle");
  }
}

bool ManualRunLoop::advanceToNextTask() {
  {
    std::lock_guard lock(mutex_);
    if (main_.empty()) return false;
    Ticks due = main_.begin()->first.first;
    if (due > now_) now_ = due;
  }
  runUntilIdle();
  return true;
}

void ManualRunLoop::advance(double seconds) {
  Ticks target;
  {
    std::lock_guard lock(mutex_);
    target = later(now_, toTicks(seconds));
  }
  runUntilIdle();
  for (;;) {
    {
      std::lock_guard lock(mutex_);
      if (main_.empty() || main_.begin()->first.first > target) break;
      Ticks due = main_.begin()->first.first;
      if (due > now_) now_ = due;
    }
    runUntilIdle();
  }
  {
    std::lock_guard lock(mutex_);
    now_ = target;
  }
  runUntilIdle();
}

size_t ManualRunLoop::pendingMainCount() const {
  std::lock_guard lock(mutex_);
  return main_.size();
}

size_t ManualRunLoop::pendingBackgroundCount() const {
  std::lock_guard lock(mutex_);
  return background_.size();
}

QualityOfService ManualRunLoop::backgroundQos(size_t index) const {
  std::lock_guard lock(mutex_);
  if (index >= background_.size()) fatalError("ManualRunLoop: no background task at that index");
  return background_[index].first;
}

void ManualRunLoop::runBackgroundTask(size_t index) {
  Task task;
  {
    std::lock_guard lock(mutex_);
    if (index >= background_.size()) fatalError("ManualRunLoop: no background task at that index");
    task = std::move(background_[index].second);
    background_.erase(background_.begin() + static_cast<std::ptrdiff_t>(index));
    ++backgroundDepth_;
  }
  task();
  std::lock_guard lock(mutex_);
  --backgroundDepth_;
}
