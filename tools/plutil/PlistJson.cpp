#include "plutil/PlistJson.h"

#include <algorithm>
#include <charconv>
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

// Writes the text straight from the value, in nlohmann's own spelling (its shortest
// round-trip reals, its escapes, two-space indent), so that no JSON tree is built on the way.
class TextWriter {
 public:
  explicit TextWriter(std::string& out) : out_(out) {}
  std::string error;

  bool value(const PlistValue& v, size_t depth) {
    switch (v.type()) {
      case PlistValue::Type::boolean:
        out_ += v.boolean() ? "true" : "false";
        return true;
      case PlistValue::Type::integer: {
        char buf[24];
        auto end = std::to_chars(buf, buf + sizeof buf, v.integer()).ptr;
        out_.append(buf, end);
        return true;
      }
      case PlistValue::Type::real:
        if (!std::isfinite(v.real()))
          return fail("the real " + std::to_string(v.real()) + " has no JSON form");
        real(v.real());
        return true;
      case PlistValue::Type::date: {
        double t = v.date().timeIntervalSinceReferenceDate;
        if (!std::isfinite(t))
          return fail("the date " + std::to_string(t) + " has no JSON form");
        tagged(kDateKey, depth);
        real(t);
        return closeTagged(depth);
      }
      case PlistValue::Type::data:
        tagged(kDataKey, depth);
        out_ += '"';
        out_ += Base64::encode(v.data());
        out_ += '"';
        return closeTagged(depth);
      case PlistValue::Type::string:
        return string(v.string());
      case PlistValue::Type::array: {
        if (depth >= PlistJson::kMaxNesting)
          return fail(nestingError());
        const auto& items = v.array();
        if (items.empty()) {
          out_ += "[]";
          return true;
        }
        out_ += "[\n";
        for (size_t i = 0; i < items.size(); ++i) {
          if (i > 0)
            out_ += ",\n";
          indent(depth + 1);
          if (!value(items[i], depth + 1))
            return false;
        }
        out_ += '\n';
        indent(depth);
        out_ += ']';
        return true;
      }
      case PlistValue::Type::dictionary: {
        if (depth >= PlistJson::kMaxNesting)
          return fail(nestingError());
        const auto& entries = v.dictionary();
        if (entries.empty()) {
          out_ += "{}";
          return true;
        }
        out_ += "{\n";
        for (size_t i = 0; i < entries.size(); ++i) {
          const auto& [key, item] = entries[i];
          if (key == kDateKey || key == kDataKey)
            return fail("the dictionary key \"" + key + "\" is reserved in the JSON form");
          if (i > 0)
            out_ += ",\n";
          indent(depth + 1);
          if (!string(key))
            return false;
          out_ += ": ";
          if (!value(item, depth + 1))
            return false;
        }
        out_ += '\n';
        indent(depth);
        out_ += '}';
        return true;
      }
    }
    return fail("unknown value type");
  }

 private:
  bool fail(std::string message) {
    error = std::move(message);
    return false;
  }

  void indent(size_t depth) { out_.append(2 * depth, ' '); }

  void real(double d) {
    char buf[64];
    out_.append(buf, nlohmann::detail::to_chars(buf, buf + sizeof buf, d));
  }

  void tagged(std::string_view key, size_t depth) {
    out_ += "{\n";
    indent(depth + 1);
    out_ += '"';
    out_ += key;
    out_ += "\": ";
  }

  bool closeTagged(size_t depth) {
    out_ += '\n';
    indent(depth);
    out_ += '}';
    return true;
  }

  bool string(const std::string& s) {
    if (!validUtf8(s))
      return fail("a string is not valid UTF-8");
    out_ += '"';
    size_t plain = 0;
    for (size_t i = 0; i < s.size(); ++i) {
      auto c = static_cast<unsigned char>(s[i]);
      if (c >= 0x20 && c != '"' && c != '\\')
        continue;
      out_.append(s, plain, i - plain);
      plain = i + 1;
      switch (c) {
        case '"': out_ += "\\\""; break;
        case '\\': out_ += "\\\\"; break;
        case '\b': out_ += "\\b"; break;
        case '\f': out_ += "\\f"; break;
        case '\n': out_ += "\\n"; break;
        case '\r': out_ += "\\r"; break;
        case '\t': out_ += "\\t"; break;
        default: {
          constexpr char kHex[] = "0123456789abcdef";
          out_ += "\\u00";
          out_ += kHex[c >> 4];
          out_ += kHex[c & 15];
        }
      }
    }
    out_.append(s, plain, s.size() - plain);
    out_ += '"';
    return true;
  }

  static bool validUtf8(const std::string& s) {
    const auto* p = reinterpret_cast<const unsigned char*>(s.data());
    const auto* end = p + s.size();
    while (p < end) {
      unsigned c = *p++;
      if (c < 0x80)
        continue;
      int extra = c >= 0xC2 && c <= 0xDF ? 1 : c >= 0xE0 && c <= 0xEF ? 2 : c >= 0xF0 && c <= 0xF4 ? 3 : -1;
      if (extra < 0 || end - p < extra)
        return false;
      unsigned second = p[0];
      // The tighter second-byte ranges rule out overlong forms, surrogates and values past U+10FFFF.
      unsigned lo = c == 0xE0 ? 0xA0 : c == 0xF0 ? 0x90 : 0x80;
      unsigned hi = c == 0xED ? 0x9F : c == 0xF4 ? 0x8F : 0xBF;
      if (second < lo || second > hi)
        return false;
      for (int i = 1; i < extra; ++i) {
        if ((p[i] & 0xC0) != 0x80)
          return false;
      }
      p += extra;
    }
    return true;
  }

  std::string& out_;
};

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
  std::string out;
  TextWriter writer(out);
  if (!writer.value(value, 0))
    return Result<std::string>::failure(std::move(writer.error));
  return out;
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
