#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/foundation/NSObject.h"

// A nib as code: a registered factory that makes its top-level objects afresh at each
// instantiation. No value for a nib that is not registered.
class UINib {
 public:
  using Factory = std::function<std::vector<std::shared_ptr<NSObject>>()>;

  static std::shared_ptr<UINib> nibWithNibName(const std::string& name);
  std::vector<std::shared_ptr<NSObject>> instantiateWithOwner(const std::shared_ptr<NSObject>& owner) const;
  const std::string& name() const { return name_; }

  static void registerNib(const std::string& name, Factory factory);
  static void unregisterAll();

  UINib(std::string name, Factory factory) : name_(std::move(name)), factory_(std::move(factory)) {}

 private:
  std::string name_;
  Factory factory_;
};
