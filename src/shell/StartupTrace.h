#pragma once

#include <QObject>

class QQuickWindow;

namespace nimbrel::shell {

// With NIMBREL_TRACE_START set, says on standard error when the window shows its first frame and
// its first frame with the home screen on top, so that a benchmark outside the process can time a
// start from launch to what a person sees (libraries loaded, platform made, scene drawn).
class StartupTrace : public QObject {
  Q_OBJECT
 public:
  explicit StartupTrace(QQuickWindow* window);
  static bool wanted();

 private:
  void frameShown();
  bool homeSeen_ = false;
};

}  // namespace nimbrel::shell
