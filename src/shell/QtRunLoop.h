#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QThreadPool>
#include <QTimer>

#include <array>
#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <utility>

#include "platform/foundation/RunLoop.h"

namespace nimbrel::shell {

// The platform's run loop over the Qt event loop. Main tasks wait in one ordered list (due time,
// then post order) served by a single timer on the main thread, so delays hold and equal due
// times keep their order; a post never runs inside its caller. Background tasks go to one serial
// worker per class of service: work of one class completes in the order it was posted, as it does
// when a test pumps the manual loop.
class QtRunLoop final : public QObject, public RunLoop {
  Q_OBJECT
 public:
  // `startSecondsSince2001`: the moment `now()` reads at construction.
  explicit QtRunLoop(double startSecondsSince2001);
  ~QtRunLoop() override;

  double now() const override;
  double elapsed() const;
  void postMain(Task task, double delay) override;
  void postBackground(Task task, QualityOfService qos) override;
  bool isMainThread() const override;

  // Main tasks due now (and the background work they start) run until none is left, with Qt's
  // own events in between. Gives up after `limitSeconds` of real time. Main thread only.
  void settle(double limitSeconds = 10.0);
  // Runs the event loop for `seconds` of real time. Main thread only.
  void runFor(double seconds);

  size_t pendingMainCount() const;
  int runningBackgroundCount() const { return background_.load(); }
  // Whether a main task is due now.
  bool hasDueMainTask() const;
  // Waits for every background worker to finish its queue (shutdown).
  void waitForBackground();

 private:
  using Ticks = std::int64_t;  // nanoseconds since construction
  Ticks ticksNow() const { return clock_.nsecsElapsed(); }
  void serve();
  void rearm();
  Q_INVOKABLE void rearmFromAnyThread();

  QElapsedTimer clock_;
  double start_;
  Qt::HANDLE mainThread_;
  mutable std::mutex mutex_;
  std::map<std::pair<Ticks, std::uint64_t>, Task> main_;
  std::uint64_t seq_ = 0;
  QTimer timer_;
  std::array<std::unique_ptr<QThreadPool>, 5> workers_;
  std::atomic<int> background_{0};
  RunLoop* previous_ = nullptr;
};

}  // namespace nimbrel::shell
