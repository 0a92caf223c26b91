#pragma once

#include <cstdint>
#include <functional>
#include <vector>

// "Something a person could see has changed": observed by a shell that redraws. Main thread only.
class ChangeSignal {
 public:
  using Observer = std::function<void()>;
  using Token = std::uint64_t;

  Token observe(Observer observer) {
    observers_.emplace_back(++lastToken_, std::move(observer));
    return lastToken_;
  }
  void unobserve(Token token) {
    std::erase_if(observers_, [token](const auto& entry) { return entry.first == token; });
  }
  void emit() const {
    if (observers_.empty()) return;
    auto copy = observers_;  // an observer may unobserve while being told
    for (const auto& entry : copy) entry.second();
  }

 private:
  std::vector<std::pair<Token, Observer>> observers_;
  Token lastToken_ = 0;
};
