#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/foundation/FatalError.h"

// The answer of a library fetch: an ordered, immutable list. Reading beyond it ends the process
// with the platform's range error.
template <class T>
class PHFetchResult {
 public:
  PHFetchResult() = default;
  explicit PHFetchResult(std::vector<std::shared_ptr<T>> objects) : objects_(std::move(objects)) {}

  size_t count() const { return objects_.size(); }
  const std::shared_ptr<T>& objectAtIndex(size_t index) const {
    if (index >= objects_.size()) {
      fatalError("*** -[PHFetchResult objectAtIndex:]: index " + std::to_string(index) +
                     (objects_.empty() ? std::string(" beyond bounds for empty fetch result")
                                       : " beyond bounds [0 .. " + std::to_string(objects_.size() - 1) + "]"),
                 "PHFetchResult", 0);
    }
    return objects_[index];
  }
  const std::shared_ptr<T>& operator[](size_t index) const { return objectAtIndex(index); }
  std::shared_ptr<T> firstObject() const { return objects_.empty() ? nullptr : objects_.front(); }
  std::shared_ptr<T> lastObject() const { return objects_.empty() ? nullptr : objects_.back(); }
  const std::vector<std::shared_ptr<T>>& objects() const { return objects_; }
  auto begin() const { return objects_.begin(); }
  auto end() const { return objects_.end(); }

 private:
  std::vector<std::shared_ptr<T>> objects_;
};
