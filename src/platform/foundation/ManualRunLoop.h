#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <mutex>
#include <utility>

#include "platform/foundation/RunLoop.h"

// A run loop with virtual time, for tests and the headless runner. Nothing runs until it is pumped;
// background tasks wait until the test runs them, so a test can pick the order in which concurrent
// work completes. Installs itself on construction and restores the previous loop on destruction.
class ManualRunLoop final : public RunLoop {
 public:
  explicit ManualRunLoop(double startSecondsSince2001 = 0);
  ~ManualRunLoop() override;
  ManualRunLoop(const ManualRunLoop&) = delete;
  ManualRunLoop& operator=(const ManualRunLoop&) = delete;

  double now() const override;
  // Seconds of virtual time since the loop was made, kept apart from the start so that small
  // steps add up exactly.
  double elapsed() const;
  void postMain(Task task, double delay) override;
  void postBackground(Task task, QualityOfService qos) override;
  bool isMainThread() const override;

  // Runs every main task that is due and every background task, until none is left. Time stands.
  void runUntilIdle();
  // Runs due main tasks only; background work stays queued.
  void runMainUntilIdle();
  // Moves time forward by `seconds`, running each task at its due moment, then settles.
  void advance(double seconds);
  // Moves to the next pending main task's due time (if any) and settles. False when nothing waits.
  bool advanceToNextTask();

  size_t pendingMainCount() const;
  size_t pendingBackgroundCount() const;
  QualityOfService backgroundQos(size_t index) const;
  // Runs the background task at `index` (0 = oldest) now, on this thread.
  void runBackgroundTask(size_t index);

 private:
  bool runOneDueMainTask();
  bool runOneBackgroundTask();

  // Virtual time counts whole nanoseconds, as dispatch deadlines do: steps and delays then add up
  // exactly, and a deadline reached by a chain of delays is the same instant as one reached by a
  // single advance.
  using Ticks = std::int64_t;
  static Ticks toTicks(double seconds);
  static double toSeconds(Ticks ticks) { return static_cast<double>(ticks) / 1e9; }

  mutable std::mutex mutex_;
  double start_;
  Ticks now_ = 0;  // elapsed; due times are in the same frame
  std::uint64_t seq_ = 0;
  std::map<std::pair<Ticks, std::uint64_t>, Task> main_;
  std::deque<std::pair<QualityOfService, Task>> background_;
  int backgroundDepth_ = 0;
  RunLoop* previous_;
};
