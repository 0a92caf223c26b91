#pragma once

#include <functional>
#include <memory>
#include <mutex>

// Process-wide objects made on first use, once, safely against races. Tests start every case from
// a fresh process state with `SharedInstances::resetAll()`.
class SharedInstances {
 public:
  static void registerReset(std::function<void()> reset);
  static void resetAll();
};

template <class T>
class SharedInstance {
 public:
  static std::shared_ptr<T> get() {
    std::lock_guard lock(mutex());
    auto& slot = storage();
    if (!slot) {
      static std::once_flag registered;
      std::call_once(registered, [] {
        SharedInstances::registerReset([] {
          std::shared_ptr<T> old;
          {
            std::lock_guard l(mutex());
            old = std::move(storage());
          }
        });
      });
      slot = std::make_shared<T>();
    }
    return slot;
  }
  static bool exists() {
    std::lock_guard lock(mutex());
    return storage() != nullptr;
  }

 private:
  static std::recursive_mutex& mutex() {
    static std::recursive_mutex m;
    return m;
  }
  static std::shared_ptr<T>& storage() {
    static std::shared_ptr<T> s;
    return s;
  }
};
