#include "platform/foundation/NSNotificationCenter.h"

NSNotificationCenter& NSNotificationCenter::defaultCenter() {
  static NSNotificationCenter center;
  return center;
}

void NSNotificationCenter::addObserver(std::weak_ptr<NSObject> observer, std::string name,
                                       std::weak_ptr<NSObject> object, Block block) {
  std::lock_guard lock(mutex_);
  const NSObject* key = observer.lock().get();
  bool any = object.expired();
  observations_.push_back({std::move(observer), key, std::move(name), std::move(object), any, std::move(block)});
}

void NSNotificationCenter::removeObserver(const NSObject* observer) {
  std::lock_guard lock(mutex_);
  std::erase_if(observations_, [observer](const Observation& o) { return o.key == observer; });
}

void NSNotificationCenter::postNotification(const NSNotification& notification) {
  std::vector<Block> due;
  {
    std::lock_guard lock(mutex_);
    std::erase_if(observations_, [](const Observation& o) { return o.observer.expired(); });
    for (const auto& o : observations_) {
      if (o.name != notification.name) continue;
      if (!o.anyObject && o.object.lock() != notification.object) continue;
      due.push_back(o.block);
    }
  }
  for (const auto& block : due) block(notification);
}

size_t NSNotificationCenter::observationCount(const NSObject* observer) const {
  std::lock_guard lock(mutex_);
  size_t n = 0;
  for (const auto& o : observations_) n += o.key == observer;
  return n;
}

void NSNotificationCenter::reset() {
  std::lock_guard lock(mutex_);
  observations_.clear();
}
