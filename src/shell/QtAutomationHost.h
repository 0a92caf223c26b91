#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickWindow>
#include <QSocketNotifier>
#include <QStringList>

#include <deque>
#include <memory>
#include <string>

#include "automation/AutomationHost.h"
#include "automation/AutomationSession.h"

namespace nimbrel::sim {
class SimPlatform;
}

namespace nimbrel::shell {

class QtRunLoop;

// The automation protocol over the live window: real time, the Qt event loop.
class QtAutomationHost final : public AutomationHost {
 public:
  QtAutomationHost(QtRunLoop& loop, sim::SimPlatform* platform) : loop_(loop), platform_(platform) {}
  void setWindow(QQuickWindow* window) { window_ = window; }
  // The preferences file, where the platform keeps one (the desktop).
  void setPreferencesPath(std::string path) { preferences_ = std::move(path); }

  double elapsed() const override;
  void settle() override;
  void advance(double seconds) override;
  nlohmann::json paths() const override;
  std::vector<std::string> sdkCalls() const override;
  std::optional<std::string> screenshot(const std::string& path) override;
  // Taps arrive as clicks on the window, where the recogniser's view lies (screens fill it).
  std::optional<std::string> gesture(UIGestureRecognizer& recognizer, CGPoint point) override;

 private:
  QtRunLoop& loop_;
  sim::SimPlatform* platform_;
  std::string preferences_;
  QPointer<QQuickWindow> window_;
};

// Reads requests from standard input without blocking the window, answers them one at a time in
// order (an `advance` runs the event loop meanwhile; lines that arrive then wait their turn), and
// ends the program at end of input.
class StdinDriver final : public QObject {
  Q_OBJECT
 public:
  explicit StdinDriver(AutomationSession& session, QObject* parent = nullptr);

 Q_SIGNALS:
  void finished();

 private:
  void readAvailable();
  void pump();

  AutomationSession& session_;
  QSocketNotifier notifier_;
  std::string partial_;
  std::deque<std::string> lines_;
  bool busy_ = false;
  bool ended_ = false;
};

}  // namespace nimbrel::shell
