#include "platform/foundation/NSLog.h"

#include <cstdio>
#include <mutex>

namespace {
std::mutex& logMutex() {
  static std::mutex m;
  return m;
}
LogSink::Writer& currentWriter() {
  static LogSink::Writer w;
  return w;
}
}  // namespace

void NSLog(std::string_view line) {
  std::lock_guard lock(logMutex());
  if (auto& w = currentWriter()) {
    w(line);
    return;
  }
  std::fwrite(line.data(), 1, line.size(), stdout);
  std::fputc('\n', stdout);
  std::fflush(stdout);
}

LogSink::Writer LogSink::install(Writer writer) {
  std::lock_guard lock(logMutex());
  auto previous = std::move(currentWriter());
  currentWriter() = std::move(writer);
  return previous;
}
