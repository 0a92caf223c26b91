#include "shell/QtMessages.h"

#include <QMutex>
#include <QMutexLocker>

#include <cstdio>

namespace nimbrel::shell {

namespace {
QMutex gMutex;
QStringList gWarnings;

void handler(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  const char* kind = "debug";
  switch (type) {
    case QtDebugMsg: kind = "debug"; break;
    case QtInfoMsg: kind = "info"; break;
    case QtWarningMsg: kind = "warning"; break;
    case QtCriticalMsg: kind = "critical"; break;
    case QtFatalMsg: kind = "fatal"; break;
  }
  QString where = context.file ? QStringLiteral(" (%1:%2)").arg(QString::fromUtf8(context.file)).arg(context.line) : QString();
  QByteArray line = QStringLiteral("qt-%1: %2%3\n").arg(QLatin1String(kind), message, where).toUtf8();
  {
    QMutexLocker lock(&gMutex);
    if (type == QtWarningMsg || type == QtCriticalMsg || type == QtFatalMsg) gWarnings.push_back(message);
  }
  std::fwrite(line.constData(), 1, static_cast<size_t>(line.size()), stderr);
  std::fflush(stderr);
  if (type == QtFatalMsg) std::abort();
}
}  // namespace

void installQtMessageRecorder() {
  qInstallMessageHandler(handler);
}

QStringList recordedQtWarnings() {
  QMutexLocker lock(&gMutex);
  return gWarnings;
}

}  // namespace nimbrel::shell
