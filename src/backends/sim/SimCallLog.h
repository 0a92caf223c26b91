#pragma once

#include <mutex>
#include <string>
#include <vector>

namespace nimbrel::sim {

// The calls the program made into the outside SDKs, in order.
class SimCallLog {
 public:
  void record(std::string call) {
    std::lock_guard lock(mutex_);
    calls_.push_back(std::move(call));
  }
  std::vector<std::string> calls() const {
    std::lock_guard lock(mutex_);
    return calls_;
  }

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> calls_;
};

}  // namespace nimbrel::sim
