#pragma once

#include <QStringList>

namespace nimbrel::shell {

// Routes Qt's own messages to standard error, one line each with its kind ("qt-warning: ..."), and
// keeps the warnings so that a test can fail on any.
void installQtMessageRecorder();
QStringList recordedQtWarnings();

}  // namespace nimbrel::shell
