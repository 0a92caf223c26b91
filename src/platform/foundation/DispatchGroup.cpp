#include "platform/foundation/DispatchGroup.h"

#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FatalError.h"

struct DispatchGroup::State {
  std::mutex mutex;
  int count = 0;
  std::vector<std::pair<const DispatchQueue*, std::function<void()>>> waiting;
};

DispatchGroup::DispatchGroup() : state_(std::make_shared<State>()) {}

void DispatchGroup::enter() {
  std::lock_guard lock(state_->mutex);
  ++state_->count;
}

void DispatchGroup::leave() {
  std::vector<std::pair<const DispatchQueue*, std::function<void()>>> ready;
  {
    std::lock_guard lock(state_->mutex);
    if (state_->count == 0) fatalError("Unbalanced call to dispatch_group_leave()");
    if (--state_->count == 0) ready.swap(state_->waiting);
  }
  for (auto& [queue, block] : ready) queue->async(std::move(block));
}

void DispatchGroup::notify(const DispatchQueue& queue, std::function<void()> block) {
  {
    std::lock_guard lock(state_->mutex);
    if (state_->count > 0) {
      state_->waiting.emplace_back(&queue, std::move(block));
      return;
    }
  }
  queue.async(std::move(block));
}

int DispatchGroup::count() const {
  std::lock_guard lock(state_->mutex);
  return state_->count;
}
