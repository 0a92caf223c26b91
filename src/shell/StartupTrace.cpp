#include "shell/StartupTrace.h"

#include <QQuickWindow>

#include <atomic>
#include <memory>
#include <cstdio>

#include "automation/TreeWriter.h"

namespace nimbrel::shell {

bool StartupTrace::wanted() { return qEnvironmentVariableIsSet("NIMBREL_TRACE_START"); }

StartupTrace::StartupTrace(QQuickWindow* window) : QObject(window) {
  auto first = std::make_shared<std::atomic<bool>>(true);
  // Swaps happen on the render thread: the first one is said from there, at once; the screens are
  // read on the main thread, a frame later at most.
  connect(window, &QQuickWindow::frameSwapped, this, [first] {
    if (first->exchange(false)) std::fputs("nimbrel: first frame\n", stderr);
  }, Qt::DirectConnection);
  connect(window, &QQuickWindow::frameSwapped, this, &StartupTrace::frameShown, Qt::QueuedConnection);
}

void StartupTrace::frameShown() {
  if (homeSeen_) return;
  auto top = TreeWriter::topScreen();
  if (!top || TreeWriter::screenId(*top) != "HomeViewController") return;
  homeSeen_ = true;
  std::fputs("nimbrel: home frame\n", stderr);
}

}  // namespace nimbrel::shell
