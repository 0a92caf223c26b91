#include "platform/foundation/Diagnostics.h"

#include <cstdio>
#include <deque>
#include <mutex>

namespace {

// Enough for what a start can find wrong; a flood before anyone listens keeps its newest lines.
constexpr size_t kKeptLines = 200;

struct State {
  std::mutex mutex;
  Diagnostics::Listener listener;
  std::deque<std::string> kept;
  std::string logFile;
};

State& state() {
  static State s;
  return s;
}

}  // namespace

void Diagnostics::report(std::string_view line) {
  auto& s = state();
  std::lock_guard lock(s.mutex);
  std::fwrite(line.data(), 1, line.size(), stderr);
  std::fputc('\n', stderr);
  std::fflush(stderr);
  if (!s.logFile.empty()) {
    if (std::FILE* f = std::fopen(s.logFile.c_str(), "a")) {
      std::fwrite(line.data(), 1, line.size(), f);
      std::fputc('\n', f);
      std::fclose(f);
    }
  }
  if (s.listener) {
    s.listener(line);
    return;
  }
  s.kept.emplace_back(line);
  if (s.kept.size() > kKeptLines) s.kept.pop_front();
}

void Diagnostics::listen(Listener listener) {
  auto& s = state();
  std::lock_guard lock(s.mutex);
  s.listener = std::move(listener);
  if (!s.listener) return;
  for (const auto& line : s.kept) s.listener(line);
  s.kept.clear();
}

void Diagnostics::setLogFile(std::string path) {
  auto& s = state();
  std::lock_guard lock(s.mutex);
  s.logFile = std::move(path);
}
