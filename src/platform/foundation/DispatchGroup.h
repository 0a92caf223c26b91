#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

class DispatchQueue;

// Counts outstanding work; notifies once the count is back at zero. Safe from any thread.
class DispatchGroup {
 public:
  DispatchGroup();
  void enter();
  // More leaves than enters end the process, as the platform does.
  void leave();
  // Runs `block` on `queue` when the group is empty (at once, one turn later, if it is now).
  void notify(const DispatchQueue& queue, std::function<void()> block);
  int count() const;

 private:
  struct State;
  std::shared_ptr<State> state_;
};
