#include "shell/QtAutomationHost.h"

#include <QCoreApplication>
#include <QImage>
#include <QMouseEvent>
#include <QTimer>

#include <unistd.h>

#include <cstdio>

#include "backends/sim/SimPlatform.h"
#include "platform/foundation/NSPathUtilities.h"
#include "shell/QtRunLoop.h"

namespace nimbrel::shell {

double QtAutomationHost::elapsed() const {
  return loop_.elapsed();
}

void QtAutomationHost::settle() {
  loop_.settle();
}

void QtAutomationHost::advance(double seconds) {
  loop_.runFor(seconds);
  loop_.settle();
}

nlohmann::json QtAutomationHost::paths() const {
  auto documents = NSSearchPathForDirectoriesInDomains(NSDocumentDirectory, NSUserDomainMask, true);
  std::string docs = documents.empty() ? std::string() : documents.front();
  return {{"home", NSHomeDirectory()},
          {"documents", docs},
          {"importedFiles", docs + "/Nimbrel/importedFiles"},
          {"preferences", preferences_.empty() ? nlohmann::json(nullptr) : nlohmann::json(preferences_)}};
}

std::vector<std::string> QtAutomationHost::sdkCalls() const {
  return platform_ ? platform_->sdkCalls() : std::vector<std::string>{};
}

std::optional<std::string> QtAutomationHost::screenshot(const std::string& path) {
  if (!window_) return "the window is not open";
  // Let bindings and animations that the last request started reach the screen first.
  loop_.settle();
  QImage picture = window_->grabWindow();
  if (picture.isNull()) return "the window could not be grabbed";
  if (!picture.save(QString::fromStdString(path))) return "the picture could not be written to " + path;
  return std::nullopt;
}

std::optional<std::string> QtAutomationHost::gesture(UIGestureRecognizer& recognizer, CGPoint point) {
  auto* tap = dynamic_cast<UITapGestureRecognizer*>(&recognizer);
  if (!tap) return AutomationHost::gesture(recognizer, point);
  if (!window_) return "the window is not open";
  loop_.settle();
  const QPointF at(point.x, point.y);
  if (!QRectF(QPointF(0, 0), QSizeF(window_->size())).contains(at)) return "the point is outside the window";
  static ulong stamp = 1000;
  auto send = [&](QEvent::Type type, Qt::MouseButtons buttons) {
    QMouseEvent event(type, at, window_->mapToGlobal(at), Qt::LeftButton, buttons, Qt::NoModifier);
    event.setTimestamp(stamp += 20);
    QCoreApplication::sendEvent(window_, &event);
  };
  // The order a window gets a double click in: press, release, press, double click, release.
  for (int i = 0; i < tap->numberOfTapsRequired; ++i) {
    send(QEvent::MouseButtonPress, Qt::LeftButton);
    if (i > 0) send(QEvent::MouseButtonDblClick, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, Qt::NoButton);
  }
  stamp += 1000;  // the next request's clicks are not part of this one
  return std::nullopt;
}

StdinDriver::StdinDriver(AutomationSession& session, QObject* parent)
    : QObject(parent), session_(session), notifier_(STDIN_FILENO, QSocketNotifier::Read) {
  connect(&notifier_, &QSocketNotifier::activated, this, [this] { readAvailable(); });
}

void StdinDriver::readAvailable() {
  char buffer[65536];
  ssize_t n = ::read(STDIN_FILENO, buffer, sizeof buffer);
  if (n <= 0) {
    notifier_.setEnabled(false);
    if (!partial_.empty()) lines_.push_back(std::move(partial_));
    partial_.clear();
    ended_ = true;
  } else {
    partial_.append(buffer, static_cast<size_t>(n));
    size_t start = 0;
    for (size_t nl; (nl = partial_.find('\n', start)) != std::string::npos; start = nl + 1) {
      lines_.push_back(partial_.substr(start, nl - start));
    }
    partial_.erase(0, start);
  }
  pump();
}

void StdinDriver::pump() {
  // A request in progress (an advance runs a nested loop) finishes before the next one starts.
  if (busy_) return;
  busy_ = true;
  while (!lines_.empty()) {
    std::string line = std::move(lines_.front());
    lines_.pop_front();
    if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
    std::string response = session_.handleLine(line);
    std::fwrite(response.data(), 1, response.size(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
  }
  busy_ = false;
  if (ended_) Q_EMIT finished();
}

}  // namespace nimbrel::shell
