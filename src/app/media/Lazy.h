#pragma once

#include <functional>
#include <mutex>
#include <optional>
#include <utility>

namespace nimbrel {

// A value made at its first read and kept; a write replaces it (and a later read keeps the
// written value). Reads hand out copies, so a value may be shared between threads.
template <class T>
class Lazy {
 public:
  explicit Lazy(std::function<T()> make) : make_(std::move(make)) {}
  Lazy(const Lazy&) = delete;
  Lazy& operator=(const Lazy&) = delete;

  T get() {
    std::lock_guard lock(mutex_);
    if (!value_) value_.emplace(make_());
    return *value_;
  }
  void set(T value) {
    std::lock_guard lock(mutex_);
    value_ = std::move(value);
  }
  bool isMade() const {
    std::lock_guard lock(mutex_);
    return value_.has_value();
  }

 private:
  mutable std::mutex mutex_;
  std::function<T()> make_;
  std::optional<T> value_;
};

}  // namespace nimbrel
