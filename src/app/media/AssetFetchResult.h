#pragma once

#include <utility>
#include <variant>
#include <vector>

namespace nimbrel {

// What a helper fetch answers: several results, one, or nothing found.
template <class T>
class AssetFetchResult {
 public:
  struct Assets {
    std::vector<T> values;
  };
  struct Asset {
    T value;
  };
  struct Error {};

  AssetFetchResult(Assets a) : value_(std::move(a)) {}  // NOLINT
  AssetFetchResult(Asset a) : value_(std::move(a)) {}   // NOLINT
  AssetFetchResult(Error e) : value_(e) {}              // NOLINT

  bool isError() const { return std::holds_alternative<Error>(value_); }
  // Null when the answer is of another case.
  const std::vector<T>* assets() const {
    auto a = std::get_if<Assets>(&value_);
    return a ? &a->values : nullptr;
  }
  const T* asset() const {
    auto a = std::get_if<Asset>(&value_);
    return a ? &a->value : nullptr;
  }
  const std::variant<Assets, Asset, Error>& value() const { return value_; }

 private:
  std::variant<Assets, Asset, Error> value_;
};

}  // namespace nimbrel
