#include "plutil/PlistJson.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <limits>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "platform/foundation/Data.h"

namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view kDateKey = "$date";
constexpr std::string_view kDataKey = "$data";

std::string nestingError() {
  return "nesting deeper than " + std::to_string(PlistJson::kMaxNesting) + " levels";
}

bool toJson(const PlistValue& v, size_t depth, Json& out, std::string& error) {
  switch (v.type()) {
    case PlistValue::Type::boolean:
      out = v.boolean();
      return true;
    case PlistValue::Type::integer:
      out = v.integer();
      return true;
    case PlistValue::Type::real:
      if (!std::isfinite(v.real())) {
        error = "the real " + std::to_string(v.real()) + " has no JSON form";
        return false;
      }
      out = v.real();
      return true;
    case PlistValue::Type::date: {
      double t = v.date().timeIntervalSinceReferenceDate;
      if (!std::isfinite(t)) {
        error = "the date " + std::to_string(t) + " has no JSON form";
        return false;
      }
      out = Json::object({{kDateKey, t}});
      return true;
    }
    case PlistValue::Type::data:
      out = Json::object({{kDataKey, Base64::encode(v.data())}});
      return true;
    case PlistValue::Type::string:
      out = v.string();
      return true;
    case PlistValue::Type::array: {
      if (depth >= PlistJson::kMaxNesting) {
        error = nestingError();
        return false;
      }
      out = Json::array();
      for (const auto& item : v.array()) {
        Json j;
        if (!toJson(item, depth + 1, j, error))
          return false;
        out.push_back(std::move(j));
      }
      return true;
    }
    case PlistValue::Type::dictionary: {
      if (depth >= PlistJson::kMaxNesting) {
        error = nestingError();
        return false;
      }
      out = Json::object();
      for (const auto& [key, value] : v.dictionary()) {
        if (key == kDateKey || key == kDataKey) {
          error = "the dictionary key \"" + key + "\" is reserved in the JSON form";
          return false;
        }
        Json j;
        if (!toJson(value, depth + 1, j, error))
          return false;
        out[key] = std::move(j);
      }
      return true;
    }
  }
  error = "unknown value type";
  return false;
}

// Builds the value while nlohmann's parser walks the text, so that numbers keep the
// integer/real distinction of their spelling and nothing is decided by a JSON tree.
class Builder : public nlohmann::json_sax<Json> {
 public:
  PlistValue root;
  std::string error;

  bool null() override { return fail("null has no property-list form"); }
  bool boolean(bool b) override { return add(PlistValue(b)); }
  bool number_integer(number_integer_t i) override { return add(PlistValue(std::int64_t{i})); }
  bool number_unsigned(number_unsigned_t u) override {
    if (u > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) {
      return fail("the integer " + std::to_string(u) + " does not fit 64 bits");
    }
    return add(PlistValue(static_cast<std::int64_t>(u)));
  }
  bool number_float(number_float_t d, const string_t& spelling) override {
    // The parser hands over integers too long for 64 bits as doubles.
    if (spelling.find_first_of(".eE") == std::string::npos) {
      return fail("the integer " + spelling + " does not fit 64 bits");
    }
    return add(PlistValue(d));
  }
  bool string(string_t& s) override { return add(PlistValue(std::move(s))); }
  bool binary(binary_t&) override { return fail("binary JSON values are not supported"); }

  bool start_object(std::size_t) override { return open(PlistValue(PlistValue::Dictionary{})); }
  bool key(string_t& k) override {
    stack_.back().key = std::move(k);
    return true;
  }
  bool end_object() override {
    PlistValue v = std::move(stack_.back().value);
    stack_.pop_back();
    if (!distinctKeys(v.dictionary()) || !unwrapTagged(v))
      return false;
    return add(std::move(v));
  }
  bool start_array(std::size_t) override { return open(PlistValue(PlistValue::Array{})); }
  bool end_array() override {
    PlistValue v = std::move(stack_.back().value);
    stack_.pop_back();
    return add(std::move(v));
  }

  bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception& e) override {
    // Drop the library's "[json.exception.parse_error.101] " prefix.
    std::string what = e.what();
    if (auto end = what.find("] ");
        what.starts_with("[json.exception") && end != std::string::npos) {
      what.erase(0, end + 2);
    }
    return fail(what);
  }

 private:
  struct Frame {
    PlistValue value;
    std::string key;  // of the entry being read, for dictionaries
  };

  bool fail(std::string message) {
    if (error.empty())
      error = std::move(message);
    return false;
  }

  bool open(PlistValue container) {
    if (stack_.size() >= PlistJson::kMaxNesting)
      return fail(nestingError());
    stack_.push_back(Frame{std::move(container), {}});
    return true;
  }

  bool add(PlistValue v) {
    if (stack_.empty()) {
      root = std::move(v);
      return true;
    }
    Frame& top = stack_.back();
    if (top.value.isArray()) {
      top.value.array().push_back(std::move(v));
    } else {
      top.value.dictionary().emplace_back(std::move(top.key), std::move(v));
    }
    return true;
  }

  bool distinctKeys(const PlistValue::Dictionary& entries) {
    std::vector<std::string_view> keys;
    keys.reserve(entries.size());
    for (const auto& e : entries)
      keys.emplace_back(e.first);
    std::sort(keys.begin(), keys.end());
    auto it = std::adjacent_find(keys.begin(), keys.end());
    if (it == keys.end())
      return true;
    return fail("the key \"" + std::string(*it) + "\" appears twice in one object");
  }

  // Turns {"$date": ...} and {"$data": ...} into the values they stand for, in place.
  bool unwrapTagged(PlistValue& v) {
    const auto& entries = v.dictionary();
    const PlistValue* date = v.find(kDateKey);
    const PlistValue* data = v.find(kDataKey);
    if (!date && !data)
      return true;
    std::string_view which = date ? kDateKey : kDataKey;
    if (entries.size() != 1) {
      return fail("an object with \"" + std::string(which) + "\" must have no other key");
    }
    if (date) {
      double t;
      if (date->isReal()) {
        t = date->real();
      } else if (date->isInteger()) {
        t = static_cast<double>(date->integer());
        // 2^63 is where int64's largest values round to; it is out of the cast's range.
        if (t >= 0x1p63 || static_cast<std::int64_t>(t) != date->integer()) {
          return fail("\"$date\" " + std::to_string(date->integer()) + " is not exact as a double");
        }
      } else {
        return fail("\"$date\" must be a number of seconds since 2001-01-01, not a " +
                    std::string(plistTypeName(date->type())));
      }
      v = PlistValue(Date{t});
      return true;
    }
    if (!data->isString()) {
      return fail("\"$data\" must be a base64 string, not a " +
                  std::string(plistTypeName(data->type())));
    }
    auto bytes = Base64::decode(data->string());
    if (!bytes)
      return fail("\"$data\" is not valid base64");
    v = PlistValue(std::move(*bytes));
    return true;
  }

  std::vector<Frame> stack_;
};

}  // namespace

Result<std::string> PlistJson::write(const PlistValue& value) {
  try {
    Json json;
    std::string error;
    if (!toJson(value, 0, json, error))
      return Result<std::string>::failure(std::move(error));
    return json.dump(2, ' ', false, nlohmann::json::error_handler_t::strict);
  } catch (const std::exception& e) {
    return Result<std::string>::failure(e.what());
  }
}

Result<PlistValue> PlistJson::read(std::string_view json) {
  try {
    Builder builder;
    bool ok = Json::sax_parse(json.begin(), json.end(), &builder);
    if (!ok || !builder.error.empty()) {
      return Result<PlistValue>::failure(builder.error.empty() ? "not valid JSON"
                                                               : std::move(builder.error));
    }
    return std::move(builder.root);
  } catch (const std::exception& e) {
    return Result<PlistValue>::failure(e.what());
  }
}
