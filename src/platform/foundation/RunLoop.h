#pragma once

#include <functional>

// The platform's queue classes, as dispatch names them.
enum class QualityOfService { userInteractive, userInitiated, default_, utility, background };

// The one scheduling interface under DispatchQueue, timers and Date::now(). One implementation is
// installed per process: the Qt event loop in the app, a ManualRunLoop in tests and the headless
// runner.
class RunLoop {
 public:
  using Task = std::function<void()>;
  virtual ~RunLoop() = default;

  // Seconds since 2001-01-01 UTC.
  virtual double now() const = 0;
  // Runs `task` on the main thread, never inside the caller, no earlier than `delay` seconds
  // from now. Tasks due at the same moment run in the order they were posted.
  virtual void postMain(Task task, double delay) = 0;
  // Runs `task` off the main thread (or, under the manual loop, when the test pumps it).
  virtual void postBackground(Task task, QualityOfService qos) = 0;
  virtual bool isMainThread() const = 0;

  // The installed loop; the process ends if none is.
  static RunLoop& current();
  static bool hasCurrent();
  // Installs `loop` (null uninstalls); returns the previous one.
  static RunLoop* install(RunLoop* loop);
};
