#pragma once

#include <string>
#include <utility>
#include <variant>

// A value or the reason there is none. Failures cross layers as values, never as exceptions.
struct Error {
  std::string message;
};

template <class T>
class Result {
 public:
  Result(T value) : v_(std::move(value)) {}  // NOLINT: implicit by design
  Result(Error error) : v_(std::move(error)) {}  // NOLINT
  static Result failure(std::string message) { return Result(Error{std::move(message)}); }

  bool ok() const { return v_.index() == 0; }
  explicit operator bool() const { return ok(); }
  T& value() & { return std::get<0>(v_); }
  const T& value() const& { return std::get<0>(v_); }
  T&& value() && { return std::get<0>(std::move(v_)); }
  T& operator*() & { return value(); }
  const T& operator*() const& { return value(); }
  T* operator->() { return &value(); }
  const T* operator->() const { return &value(); }
  const std::string& error() const { return std::get<1>(v_).message; }

 private:
  std::variant<T, Error> v_;
};
