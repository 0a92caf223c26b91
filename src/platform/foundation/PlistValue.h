#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "platform/foundation/Data.h"
#include "platform/foundation/Date.h"

// One property-list object: what the preferences store and the persisted lists hold.
// Strings are UTF-8; a dictionary keeps its keys in insertion order and each key once.
class PlistValue {
 public:
  enum class Type { boolean, integer, real, date, data, string, array, dictionary };
  using Array = std::vector<PlistValue>;
  using Dictionary = std::vector<std::pair<std::string, PlistValue>>;

  PlistValue() : v_(false) {}
  PlistValue(bool b) : v_(b) {}                               // NOLINT
  PlistValue(int i) : v_(static_cast<std::int64_t>(i)) {}     // NOLINT
  PlistValue(std::int64_t i) : v_(i) {}                       // NOLINT
  PlistValue(double d) : v_(d) {}                             // NOLINT
  PlistValue(Date d) : v_(d) {}                               // NOLINT
  PlistValue(Data d) : v_(std::move(d)) {}                    // NOLINT
  PlistValue(std::string s) : v_(std::move(s)) {}             // NOLINT
  PlistValue(const char* s) : v_(std::string(s)) {}           // NOLINT
  PlistValue(Array a) : v_(std::move(a)) {}                   // NOLINT
  PlistValue(Dictionary d) : v_(std::move(d)) {}              // NOLINT

  Type type() const { return static_cast<Type>(v_.index()); }
  bool isBoolean() const { return type() == Type::boolean; }
  bool isInteger() const { return type() == Type::integer; }
  bool isReal() const { return type() == Type::real; }
  bool isDate() const { return type() == Type::date; }
  bool isData() const { return type() == Type::data; }
  bool isString() const { return type() == Type::string; }
  bool isArray() const { return type() == Type::array; }
  bool isDictionary() const { return type() == Type::dictionary; }

  // Unchecked by type: asking a value for another type ends the process.
  bool boolean() const;
  std::int64_t integer() const;
  double real() const;
  Date date() const;
  const Data& data() const;
  const std::string& string() const;
  const Array& array() const;
  Array& array();
  const Dictionary& dictionary() const;
  Dictionary& dictionary();

  // Dictionary lookup by key; null when absent or when this is no dictionary.
  const PlistValue* find(std::string_view key) const;
  // Sets or replaces a key of a dictionary, keeping the first position of an existing key.
  void set(std::string key, PlistValue value);
  bool erase(std::string_view key);

  friend bool operator==(const PlistValue& a, const PlistValue& b);

 private:
  std::variant<bool, std::int64_t, double, Date, Data, std::string, Array, Dictionary> v_;
};

const char* plistTypeName(PlistValue::Type type);
