#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

// "Something a person could see has changed": observed by a shell that redraws. Main thread only.
class ChangeSignal {
 public:
  using Observer = std::function<void()>;
  using Token = std::uint64_t;

  Token observe(Observer observer) {
    observers_.emplace_back(++lastToken_, std::make_shared<Observer>(std::move(observer)));
    return lastToken_;
  }
  void unobserve(Token token) {
    std::erase_if(observers_, [token](const auto& entry) { return entry.first == token; });
  }
  void emit() const {
    if (observers_.empty()) return;
    // Observers may unobserve themselves or others while being told: those taken away before
    // their turn are skipped, and the one running stays alive until it returns. Those added
    // meanwhile hear from the next change on.
    auto snapshot = observers_;
    for (const auto& [token, observer] : snapshot) {
      bool stillObserving = std::any_of(observers_.begin(), observers_.end(),
                                        [token](const auto& entry) { return entry.first == token; });
      if (stillObserving) (*observer)();
    }
  }

 private:
  std::vector<std::pair<Token, std::shared_ptr<Observer>>> observers_;
  Token lastToken_ = 0;
};
