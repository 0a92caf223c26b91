#include "platform/foundation/PlistValue.h"

#include "platform/foundation/FatalError.h"

namespace {
template <class T, class V>
auto& checked(V& v, PlistValue::Type want, PlistValue::Type have) {
  if (want != have) {
    fatalError(std::string("property list value is ") + plistTypeName(have) + ", not " +
               plistTypeName(want));
  }
  return std::get<T>(v);
}
}  // namespace

bool PlistValue::boolean() const { return checked<bool>(v_, Type::boolean, type()); }
std::int64_t PlistValue::integer() const { return checked<std::int64_t>(v_, Type::integer, type()); }
double PlistValue::real() const { return checked<double>(v_, Type::real, type()); }
Date PlistValue::date() const { return checked<Date>(v_, Type::date, type()); }
const Data& PlistValue::data() const { return checked<Data>(v_, Type::data, type()); }
const std::string& PlistValue::string() const {
  return checked<std::string>(v_, Type::string, type());
}
const PlistValue::Array& PlistValue::array() const {
  return checked<Array>(v_, Type::array, type());
}
PlistValue::Array& PlistValue::array() { return checked<Array>(v_, Type::array, type()); }
const PlistValue::Dictionary& PlistValue::dictionary() const {
  return checked<Dictionary>(v_, Type::dictionary, type());
}
PlistValue::Dictionary& PlistValue::dictionary() {
  return checked<Dictionary>(v_, Type::dictionary, type());
}

const PlistValue* PlistValue::find(std::string_view key) const {
  if (!isDictionary()) return nullptr;
  for (const auto& [k, v] : std::get<Dictionary>(v_)) {
    if (k == key) return &v;
  }
  return nullptr;
}

void PlistValue::set(std::string key, PlistValue value) {
  auto& dict = dictionary();
  for (auto& [k, v] : dict) {
    if (k == key) {
      v = std::move(value);
      return;
    }
  }
  dict.emplace_back(std::move(key), std::move(value));
}

bool PlistValue::erase(std::string_view key) {
  auto& dict = dictionary();
  for (auto it = dict.begin(); it != dict.end(); ++it) {
    if (it->first == key) {
      dict.erase(it);
      return true;
    }
  }
  return false;
}

bool operator==(const PlistValue& a, const PlistValue& b) {
  if (a.type() != b.type()) return false;
  if (a.isDictionary()) {
    // Key order carries no meaning.
    const auto& da = a.dictionary();
    const auto& db = b.dictionary();
    if (da.size() != db.size()) return false;
    for (const auto& [k, v] : da) {
      const PlistValue* other = b.find(k);
      if (!other || !(*other == v)) return false;
    }
    return true;
  }
  return a.v_ == b.v_;
}

const char* plistTypeName(PlistValue::Type type) {
  switch (type) {
    case PlistValue::Type::boolean: return "boolean";
    case PlistValue::Type::integer: return "integer";
    case PlistValue::Type::real: return "real";
    case PlistValue::Type::date: return "date";
    case PlistValue::Type::data: return "data";
    case PlistValue::Type::string: return "string";
    case PlistValue::Type::array: return "array";
    case PlistValue::Type::dictionary: return "dictionary";
  }
  return "unknown";
}
