#include "backends/sim/Fixture.h"

#include <fstream>
#include <sstream>

#include "backends/sim/Iso8601.h"
#include "platform/foundation/Data.h"
#include "platform/foundation/PropertyListEncoder.h"

namespace nimbrel::sim {

namespace {

using json = nlohmann::json;

struct Bad {
  std::string why;
};

const json* member(const json& object, const char* key) {
  if (!object.is_object()) return nullptr;
  auto it = object.find(key);
  return it == object.end() ? nullptr : &*it;
}

double date(const json& v, const std::string& where) {
  if (v.is_number()) return v.get<double>();
  if (!v.is_string()) throw Bad{where + ": a date must be an ISO 8601 string"};
  auto parsed = parseIso8601(v.get<std::string>());
  if (!parsed) throw Bad{where + ": \"" + v.get<std::string>() + "\" is no ISO 8601 date"};
  return *parsed;
}

std::string text(const json& v, const std::string& where) {
  if (!v.is_string()) throw Bad{where + ": expected a string"};
  return v.get<std::string>();
}

std::int64_t integer(const json& v, const std::string& where) {
  if (!v.is_number_integer() && !v.is_number_unsigned()) {
    if (v.is_number_float() && v.get<double>() == static_cast<double>(static_cast<std::int64_t>(v.get<double>()))) {
      return static_cast<std::int64_t>(v.get<double>());
    }
    throw Bad{where + ": expected an integer"};
  }
  return v.get<std::int64_t>();
}

std::optional<std::int64_t> optionalInteger(const json& v, const std::string& where) {
  if (v.is_null()) return std::nullopt;
  return integer(v, where);
}

std::string oneOf(const json& v, const std::string& where, std::initializer_list<const char*> allowed) {
  std::string s = text(v, where);
  for (const char* a : allowed) {
    if (s == a) return s;
  }
  std::string list;
  for (const char* a : allowed) list += (list.empty() ? "" : ", ") + std::string(a);
  throw Bad{where + ": \"" + s + "\" is not one of " + list};
}

Fixture::Permission permission(const json& v, const std::string& where) {
  Fixture::Permission p;
  if (v.is_number()) {
    p.answer = static_cast<int>(integer(v, where));
  } else if (v.is_object()) {
    if (auto s = member(v, "status")) p.status = static_cast<int>(integer(*s, where + ".status"));
    if (auto a = member(v, "answer")) p.answer = static_cast<int>(integer(*a, where + ".answer"));
  } else {
    throw Bad{where + ": expected a number or {status, answer}"};
  }
  for (int n : {p.status, p.answer}) {
    if (n < 0 || n > 4) throw Bad{where + ": authorisation statuses run from 0 to 4"};
  }
  return p;
}

PlistValue plistFromJson(const json& v, const std::string& where) {
  switch (v.type()) {
    case json::value_t::boolean: return PlistValue(v.get<bool>());
    case json::value_t::number_integer:
    case json::value_t::number_unsigned: return PlistValue(v.get<std::int64_t>());
    case json::value_t::number_float: return PlistValue(v.get<double>());
    case json::value_t::string: return PlistValue(v.get<std::string>());
    case json::value_t::array: {
      PlistValue::Array a;
      for (size_t i = 0; i < v.size(); ++i) a.push_back(plistFromJson(v[i], where + "[" + std::to_string(i) + "]"));
      return PlistValue(std::move(a));
    }
    case json::value_t::object: {
      if (auto d = member(v, "$data")) {
        auto bytes = Base64::decode(text(*d, where + ".$data"));
        if (!bytes) throw Bad{where + ".$data: not base64"};
        return PlistValue(std::move(*bytes));
      }
      if (auto d = member(v, "$date")) return PlistValue(Date{date(*d, where + ".$date")});
      PlistValue::Dictionary dict;
      for (auto it = v.begin(); it != v.end(); ++it) {
        dict.emplace_back(it.key(), plistFromJson(it.value(), where + "." + it.key()));
      }
      return PlistValue(std::move(dict));
    }
    default: throw Bad{where + ": null cannot be stored"};
  }
}

// The persisted form of a list of records: the same bytes the program writes.
Data encodedRecords(const json& records, const std::string& where) {
  if (!records.is_array()) throw Bad{where + ": expected an array of records"};
  PlistValue::Array array;
  for (size_t i = 0; i < records.size(); ++i) {
    const json& r = records[i];
    std::string at = where + "[" + std::to_string(i) + "]";
    auto url = member(r, "url");
    auto opened = member(r, "openingDate");
    auto kind = member(r, "filetype");
    if (!url || !opened || !kind) throw Bad{at + ": a record has url, openingDate and filetype"};
    array.push_back(PlistValue(PlistValue::Dictionary{
        {"url", PlistValue(PlistValue::Dictionary{{"relative", PlistValue(text(*url, at + ".url"))}})},
        {"openingDate", PlistValue(Date{date(*opened, at + ".openingDate")})},
        {"filetype", PlistValue(text(*kind, at + ".filetype"))},
    }));
  }
  auto bytes = PropertyListEncoder().encode(PlistValue(std::move(array)));
  if (!bytes) throw Bad{where + ": " + bytes.error()};
  return std::move(bytes).value();
}

void readPreferences(const json& prefs, Fixture& f) {
  if (!prefs.is_object()) throw Bad{"preferences: expected an object"};
  for (auto it = prefs.begin(); it != prefs.end(); ++it) {
    const std::string& key = it.key();
    std::string where = "preferences." + key;
    if ((key == "recentFiles" || key == "favFiles") && it.value().is_array()) {
      f.preferences.emplace_back(key, PlistValue(encodedRecords(it.value(), where)));
    } else if (key.size() > 5 && key.ends_with("Bytes")) {
      auto bytes = Base64::decode(text(it.value(), where));
      if (!bytes) throw Bad{where + ": not base64"};
      f.preferences.emplace_back(key.substr(0, key.size() - 5), PlistValue(std::move(*bytes)));
    } else {
      f.preferences.emplace_back(key, plistFromJson(it.value(), where));
    }
  }
}

}  // namespace

Result<Fixture> Fixture::parse(const std::string& input) {
  json j = json::parse(input, nullptr, false);
  if (j.is_discarded()) return Result<Fixture>::failure("the fixture is not valid JSON");
  if (!j.is_object()) return Result<Fixture>::failure("the fixture must be a JSON object");
  Fixture f;
  f.raw = j;
  try {
    f.now = *parseIso8601("2026-01-01T00:00:00Z");
    if (auto v = member(j, "now")) f.now = date(*v, "now");
    if (auto v = member(j, "locale")) f.locale = text(*v, "locale");
    if (auto v = member(j, "timeZone")) f.timeZone = text(*v, "timeZone");
    if (auto d = member(j, "device")) {
      if (auto v = member(*d, "idiom")) f.idiom = oneOf(*v, "device.idiom", {"phone", "pad", "unspecified"});
      if (auto v = member(*d, "systemVersion")) f.systemVersion = text(*v, "device.systemVersion");
      if (auto s = member(*d, "screen")) {
        if (auto v = member(*s, "width")) f.screenWidth = v->get<double>();
        if (auto v = member(*s, "height")) f.screenHeight = v->get<double>();
        if (auto v = member(*s, "scale")) f.screenScale = v->get<double>();
      }
    }
    if (auto v = member(j, "volume")) {
      if (auto s = member(*v, "size")) f.volumeSize = optionalInteger(*s, "volume.size");
      if (auto s = member(*v, "free")) f.volumeFree = optionalInteger(*s, "volume.free");
      if (auto s = member(*v, "importantAvailable")) {
        f.volumeImportantAvailable = optionalInteger(*s, "volume.importantAvailable");
      }
    }
    if (auto p = member(j, "permissions")) {
      if (auto v = member(*p, "photos")) f.photos = permission(*v, "permissions.photos");
      if (auto v = member(*p, "music")) f.music = permission(*v, "permissions.music");
      if (auto v = member(*p, "tracking")) f.tracking = permission(*v, "permissions.tracking");
    }
    if (auto a = member(j, "ads")) {
      if (auto al = member(*a, "applovin")) {
        if (auto v = member(*al, "interstitial")) {
          f.applovinInterstitial = oneOf(*v, "ads.applovin.interstitial", {"ready", "fill", "nofill"});
        }
        if (auto v = member(*al, "native")) f.applovinNative = oneOf(*v, "ads.applovin.native", {"fill", "nofill"});
        if (auto v = member(*al, "appOpen")) f.applovinAppOpen = oneOf(*v, "ads.applovin.appOpen", {"fill", "nofill"});
      }
      if (auto g = member(*a, "google")) {
        if (auto v = member(*g, "interstitial")) {
          f.googleInterstitial = oneOf(*v, "ads.google.interstitial", {"fill", "nofill"});
        }
      }
    }
    if (auto p = member(j, "preferences")) readPreferences(*p, f);
    if (auto docs = member(j, "documents")) {
      if (!docs->is_array()) throw Bad{"documents: expected an array"};
      for (size_t i = 0; i < docs->size(); ++i) {
        const json& d = (*docs)[i];
        std::string at = "documents[" + std::to_string(i) + "]";
        Document doc;
        auto name = member(d, "name");
        if (!name) throw Bad{at + ": a document needs a name"};
        doc.name = text(*name, at + ".name");
        if (doc.name.empty() || doc.name.find('/') != std::string::npos || doc.name == "." || doc.name == "..") {
          throw Bad{at + ".name: \"" + doc.name + "\" is no file name"};
        }
        if (auto s = member(d, "size")) doc.size = integer(*s, at + ".size");
        if (doc.size < 0) throw Bad{at + ".size: negative"};
        doc.created = f.now;
        if (auto c = member(d, "created")) doc.created = date(*c, at + ".created");
        f.documents.push_back(std::move(doc));
      }
    }
  } catch (const Bad& bad) {
    return Result<Fixture>::failure(bad.why);
  } catch (const json::exception& e) {
    return Result<Fixture>::failure(std::string("the fixture has a value of the wrong type: ") + e.what());
  }
  return f;
}

Result<Fixture> Fixture::load(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return Result<Fixture>::failure("cannot read the fixture " + path);
  std::stringstream buffer;
  buffer << in.rdbuf();
  auto parsed = parse(buffer.str());
  if (!parsed) return Result<Fixture>::failure(path + ": " + parsed.error());
  return parsed;
}

}  // namespace nimbrel::sim
