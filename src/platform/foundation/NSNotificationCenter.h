#pragma once

#include <any>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "platform/foundation/NSObject.h"

struct NSNotification {
  std::string name;
  std::shared_ptr<NSObject> object;
  std::map<std::string, std::any> userInfo;
};

// Observers by name and sender; a post calls them on the posting thread, in the order they were
// added. An observer that went away is forgotten.
class NSNotificationCenter {
 public:
  using Block = std::function<void(const NSNotification&)>;
  static NSNotificationCenter& defaultCenter();

  // `object` null observes the name from every sender.
  void addObserver(std::weak_ptr<NSObject> observer, std::string name, std::weak_ptr<NSObject> object, Block block);
  // Every observation of this observer.
  void removeObserver(const NSObject* observer);
  void postNotification(const NSNotification& notification);
  size_t observationCount(const NSObject* observer) const;
  void reset();

 private:
  struct Observation {
    std::weak_ptr<NSObject> observer;
    const NSObject* key;
    std::string name;
    std::weak_ptr<NSObject> object;
    bool anyObject;
    Block block;
  };
  mutable std::mutex mutex_;
  std::vector<Observation> observations_;
};
