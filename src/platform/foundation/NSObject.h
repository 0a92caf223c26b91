#pragma once

#include <memory>

// Root of the reference-counted platform objects: owners hold std::shared_ptr, weak references
// are std::weak_ptr, and an object can hand out a strong reference to itself.
class NSObject : public std::enable_shared_from_this<NSObject> {
 public:
  virtual ~NSObject() = default;

  template <class T>
  std::shared_ptr<T> strongSelf() {
    return std::static_pointer_cast<T>(shared_from_this());
  }
  template <class T>
  std::weak_ptr<T> weakSelf() {
    return strongSelf<T>();
  }
};

// A strong reference that is null when the object is not of type T.
template <class T, class U>
std::shared_ptr<T> as(const std::shared_ptr<U>& object) {
  return std::dynamic_pointer_cast<T>(object);
}
