#include "shell/QtRunLoop.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>

#include <algorithm>
#include <cmath>

namespace nimbrel::shell {

namespace {
constexpr std::int64_t kMaxTicks = std::int64_t{1} << 61;

std::int64_t delayTicks(double seconds) {
  if (!(seconds > 0)) return 0;
  double ns = seconds * 1e9;
  if (ns >= static_cast<double>(kMaxTicks)) return kMaxTicks;
  return std::llround(ns);
}
}  // namespace

QtRunLoop::QtRunLoop(double start) : start_(start), mainThread_(QThread::currentThreadId()) {
  clock_.start();
  timer_.setSingleShot(true);
  timer_.setTimerType(Qt::PreciseTimer);
  connect(&timer_, &QTimer::timeout, this, &QtRunLoop::serve);
  for (auto& pool : workers_) {
    pool = std::make_unique<QThreadPool>();
    pool->setMaxThreadCount(1);
    pool->setExpiryTimeout(-1);
  }
}

QtRunLoop::~QtRunLoop() {
  waitForBackground();
}

double QtRunLoop::elapsed() const {
  return static_cast<double>(ticksNow()) / 1e9;
}

double QtRunLoop::now() const {
  return start_ + elapsed();
}

bool QtRunLoop::isMainThread() const {
  return QThread::currentThreadId() == mainThread_;
}

void QtRunLoop::postMain(Task task, double delay) {
  {
    std::lock_guard lock(mutex_);
    Ticks due = std::min(ticksNow() + delayTicks(delay), kMaxTicks);
    main_.emplace(std::make_pair(due, seq_++), std::move(task));
  }
  if (isMainThread()) {
    rearm();
  } else {
    QMetaObject::invokeMethod(this, "rearmFromAnyThread", Qt::QueuedConnection);
  }
}

void QtRunLoop::rearmFromAnyThread() {
  rearm();
}

void QtRunLoop::rearm() {
  Ticks due;
  {
    std::lock_guard lock(mutex_);
    if (main_.empty()) {
      timer_.stop();
      return;
    }
    due = main_.begin()->first.first;
  }
  Ticks wait = std::max<Ticks>(0, due - ticksNow());
  // Round up so that the timer never fires before the due moment.
  auto ms = static_cast<int>(std::min<Ticks>((wait + 999'999) / 1'000'000, 24LL * 3600 * 1000));
  if (!timer_.isActive() || timer_.remainingTime() > ms) timer_.start(ms);
}

void QtRunLoop::serve() {
  // Only what was waiting when this turn began: tasks posted meanwhile run in a later turn, so
  // that input and painting are never starved by a chain of posts.
  std::uint64_t limit;
  {
    std::lock_guard lock(mutex_);
    limit = seq_;
  }
  for (;;) {
    Task task;
    {
      std::lock_guard lock(mutex_);
      Ticks now = ticksNow();
      auto it = main_.begin();
      while (it != main_.end() && it->first.first <= now && it->first.second >= limit) ++it;
      if (it == main_.end() || it->first.first > now) break;
      task = std::move(it->second);
      main_.erase(it);
    }
    task();
  }
  rearm();
}

void QtRunLoop::postBackground(Task task, QualityOfService qos) {
  background_.fetch_add(1);
  auto& pool = workers_[static_cast<size_t>(qos)];
  pool->start([this, task = std::move(task)] {
    task();
    background_.fetch_sub(1);
  });
}

size_t QtRunLoop::pendingMainCount() const {
  std::lock_guard lock(mutex_);
  return main_.size();
}

bool QtRunLoop::hasDueMainTask() const {
  std::lock_guard lock(mutex_);
  return !main_.empty() && main_.begin()->first.first <= ticksNow();
}

void QtRunLoop::settle(double limitSeconds) {
  QElapsedTimer spent;
  spent.start();
  int quiet = 0;
  while (spent.elapsed() < static_cast<qint64>(limitSeconds * 1000)) {
    QCoreApplication::processEvents(QEventLoop::AllEvents);
    if (hasDueMainTask()) {
      serve();
      quiet = 0;
      continue;
    }
    if (background_.load() > 0) {
      quiet = 0;
      QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 2);
      continue;
    }
    // Two quiet passes in a row: posted events from the last tasks have been delivered too.
    if (++quiet >= 2) return;
  }
}

void QtRunLoop::runFor(double seconds) {
  QEventLoop loop;
  QTimer::singleShot(static_cast<int>(std::lround(seconds * 1000)), Qt::PreciseTimer, &loop, &QEventLoop::quit);
  loop.exec();
}

void QtRunLoop::waitForBackground() {
  for (auto& pool : workers_) {
    if (pool) pool->waitForDone();
  }
}

}  // namespace nimbrel::shell
