#include "backends/sim/Fixture.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdlib>
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
  if (v.is_number_float()) {
    // "4e10" is a whole number too; the conversion is only defined below 2^63 in size.
    double d = v.get<double>();
    constexpr double kLimit = 9223372036854775808.0;
    if (d >= -kLimit && d < kLimit && d == std::trunc(d)) return static_cast<std::int64_t>(d);
    throw Bad{where + ": expected an integer of at most 64 bits"};
  }
  if (!v.is_number_integer()) throw Bad{where + ": expected an integer"};
  if (v.is_number_unsigned() && v.get<std::uint64_t>() > static_cast<std::uint64_t>(INT64_MAX)) {
    throw Bad{where + ": expected an integer of at most 64 bits"};
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

double number(const json& v, const std::string& where) {
  if (!v.is_number()) throw Bad{where + ": expected a number"};
  return v.get<double>();
}

bool boolean(const json& v, const std::string& where) {
  if (!v.is_boolean()) throw Bad{where + ": expected true or false"};
  return v.get<bool>();
}

std::string fourDigits(size_t n) {
  std::string s = std::to_string(n);
  return std::string(s.size() < 4 ? 4 - s.size() : 0, '0') + s;
}

void readPhotos(const json& photos, Fixture& f) {
  if (!photos.is_object()) throw Bad{"photos: expected an object"};
  if (auto assets = member(photos, "assets")) {
    if (!assets->is_array()) throw Bad{"photos.assets: expected an array"};
    for (size_t i = 0; i < assets->size(); ++i) {
      const json& a = (*assets)[i];
      std::string at = "photos.assets[" + std::to_string(i) + "]";
      if (!a.is_object()) throw Bad{at + ": expected an object"};
      Fixture::PhotoAsset asset;
      PHAssetRecord& r = asset.record;
      auto id = member(a, "id");
      if (!id) throw Bad{at + ": an asset needs its id"};
      r.localIdentifier = text(*id, at + ".id");
      int mediaType = 1;
      if (auto v = member(a, "mediaType")) mediaType = static_cast<int>(integer(*v, at + ".mediaType"));
      if (mediaType < 0 || mediaType > 3) throw Bad{at + ".mediaType: 0 to 3"};
      r.mediaType = static_cast<PHAssetMediaType>(mediaType);
      if (auto v = member(a, "subtypes")) r.mediaSubtypes = static_cast<unsigned>(integer(*v, at + ".subtypes"));
      r.creationDate = Date{f.now};
      if (auto v = member(a, "created")) {
        r.creationDate = v->is_null() ? std::nullopt : std::optional<Date>(Date{date(*v, at + ".created")});
      }
      r.pixelWidth = 4032;
      r.pixelHeight = 3024;
      if (auto v = member(a, "width")) r.pixelWidth = static_cast<int>(integer(*v, at + ".width"));
      if (auto v = member(a, "height")) r.pixelHeight = static_cast<int>(integer(*v, at + ".height"));
      bool isVideo = r.mediaType == PHAssetMediaType::video;
      r.filename = "IMG_" + fourDigits(i + 1) + (isVideo ? ".MOV" : ".JPG");
      if (auto v = member(a, "filename")) r.filename = text(*v, at + ".filename");
      r.fileSize = 1'000'000;
      if (auto v = member(a, "fileSize")) r.fileSize = optionalInteger(*v, at + ".fileSize");
      if (r.fileSize && *r.fileSize < 0) throw Bad{at + ".fileSize: negative"};
      if (auto v = member(a, "resources")) r.resourceCount = static_cast<int>(integer(*v, at + ".resources"));
      if (r.resourceCount < 0) throw Bad{at + ".resources: negative"};
      if (auto v = member(a, "duration")) r.duration = number(*v, at + ".duration");
      if (auto v = member(a, "favorite")) r.favorite = boolean(*v, at + ".favorite");
      if (auto loc = member(a, "location"); loc && !loc->is_null()) {
        auto lat = member(*loc, "latitude");
        auto lon = member(*loc, "longitude");
        if (!lat || !lon) throw Bad{at + ".location: needs latitude and longitude"};
        r.location = CLLocation{{number(*lat, at + ".location.latitude"), number(*lon, at + ".location.longitude")}};
        if (auto place = member(*loc, "locality"); place && !place->is_null()) {
          r.locality = text(*place, at + ".location.locality");
        }
      }
      asset.video = isVideo ? "url" : "none";
      if (auto v = member(a, "video")) asset.video = oneOf(*v, at + ".video", {"url", "composition", "none"});
      if (auto v = member(a, "editingInput")) asset.editingInput = boolean(*v, at + ".editingInput");
      if (auto v = member(a, "imageData")) asset.imageData = boolean(*v, at + ".imageData");
      for (const auto& earlier : f.photoAssets) {
        if (earlier.record.localIdentifier == r.localIdentifier) throw Bad{at + ".id: \"" + r.localIdentifier + "\" is used twice"};
      }
      f.photoAssets.push_back(std::move(asset));
    }
  }
  if (auto albums = member(photos, "albums")) {
    if (!albums->is_array()) throw Bad{"photos.albums: expected an array"};
    for (size_t i = 0; i < albums->size(); ++i) {
      const json& a = (*albums)[i];
      std::string at = "photos.albums[" + std::to_string(i) + "]";
      PHAssetCollectionRecord album;
      auto id = member(a, "id");
      if (!id) throw Bad{at + ": an album needs its id"};
      album.localIdentifier = text(*id, at + ".id");
      if (auto v = member(a, "title"); v && !v->is_null()) album.title = text(*v, at + ".title");
      int type = 1;
      if (auto v = member(a, "type")) type = static_cast<int>(integer(*v, at + ".type"));
      if (type != 1 && type != 2) throw Bad{at + ".type: 1 (album) or 2 (smart album)"};
      album.type = static_cast<PHAssetCollectionType>(type);
      album.subtype = 2;
      if (auto v = member(a, "subtype")) album.subtype = integer(*v, at + ".subtype");
      if (auto list = member(a, "assets")) {
        if (!list->is_array()) throw Bad{at + ".assets: expected an array of asset ids"};
        for (size_t k = 0; k < list->size(); ++k) {
          std::string assetId = text((*list)[k], at + ".assets[" + std::to_string(k) + "]");
          bool known = false;
          for (const auto& asset : f.photoAssets) known = known || asset.record.localIdentifier == assetId;
          if (!known) throw Bad{at + ".assets: no asset \"" + assetId + "\""};
          album.assetIdentifiers.push_back(std::move(assetId));
        }
      }
      f.photoAlbums.push_back(std::move(album));
    }
  } else if (!f.photoAssets.empty()) {
    // Without albums, the library still has its user library holding every asset.
    PHAssetCollectionRecord library;
    library.localIdentifier = "A1000000-0000-4000-8000-000000000209/L0/040";
    library.title = "Recents";
    library.type = PHAssetCollectionType::smartAlbum;
    library.subtype = 209;
    for (const auto& asset : f.photoAssets) library.assetIdentifiers.push_back(asset.record.localIdentifier);
    f.photoAlbums.push_back(std::move(library));
  }
  if (auto v = member(photos, "confirmDeletes")) f.confirmPhotoDeletes = boolean(*v, "photos.confirmDeletes");
}

std::optional<std::string> optionalText(const json& v, const std::string& where) {
  if (v.is_null()) return std::nullopt;
  return text(v, where);
}

std::uint64_t persistentId(const json& v, const std::string& where) {
  std::string s = v.is_string() ? v.get<std::string>() : (v.is_number_unsigned() || v.is_number_integer()) ? std::to_string(v.get<std::uint64_t>()) : std::string();
  if (s.empty() || s.find_first_not_of("0123456789") != std::string::npos || s.size() > 20) {
    throw Bad{where + ": a persistent id is a decimal 64-bit number"};
  }
  errno = 0;
  char* end = nullptr;
  unsigned long long n = std::strtoull(s.c_str(), &end, 10);
  if (errno == ERANGE) throw Bad{where + ": a persistent id is a decimal 64-bit number"};
  return n;
}

void readMusic(const json& music, Fixture& f) {
  if (!music.is_object()) throw Bad{"music: expected an object"};
  if (auto songs = member(music, "songs")) {
    if (!songs->is_array()) throw Bad{"music.songs: expected an array"};
    for (size_t i = 0; i < songs->size(); ++i) {
      const json& s = (*songs)[i];
      std::string at = "music.songs[" + std::to_string(i) + "]";
      MPMediaItemRecord song;
      auto id = member(s, "persistentID");
      if (!id) throw Bad{at + ": a song needs its persistentID"};
      song.persistentID = persistentId(*id, at + ".persistentID");
      if (auto v = member(s, "title")) song.title = optionalText(*v, at + ".title");
      if (auto v = member(s, "artist")) song.artist = optionalText(*v, at + ".artist");
      if (auto v = member(s, "albumTitle")) song.albumTitle = optionalText(*v, at + ".albumTitle");
      if (auto v = member(s, "duration")) song.playbackDuration = number(*v, at + ".duration");
      song.fileSize = 4'000'000;
      if (auto v = member(s, "fileSize")) song.fileSize = optionalInteger(*v, at + ".fileSize");
      song.dateAdded = Date{f.now};
      if (auto v = member(s, "dateAdded")) {
        song.dateAdded = v->is_null() ? std::nullopt : std::optional<Date>(Date{date(*v, at + ".dateAdded")});
      }
      if (auto v = member(s, "hasAssetURL")) song.hasAssetURL = boolean(*v, at + ".hasAssetURL");
      if (auto v = member(s, "artwork")) {
        // "unrenderable": the song has artwork that gives no picture at any size.
        if (v->is_string() && v->get<std::string>() == "unrenderable") {
          song.hasArtwork = true;
          song.artworkRenders = false;
        } else {
          song.hasArtwork = boolean(*v, at + ".artwork");
        }
      }
      if (auto v = member(s, "readable")) song.readable = boolean(*v, at + ".readable");
      for (const auto& earlier : f.songs) {
        if (earlier.persistentID == song.persistentID) throw Bad{at + ".persistentID: used twice"};
      }
      f.songs.push_back(std::move(song));
    }
  }
  if (auto albums = member(music, "albums")) {
    if (!albums->is_array()) throw Bad{"music.albums: expected an array"};
    for (size_t i = 0; i < albums->size(); ++i) {
      const json& a = (*albums)[i];
      std::string at = "music.albums[" + std::to_string(i) + "]";
      MPMediaCollectionRecord album;
      if (auto v = member(a, "title")) album.title = optionalText(*v, at + ".title");
      if (auto list = member(a, "songs")) {
        if (!list->is_array()) throw Bad{at + ".songs: expected an array of persistent ids"};
        for (size_t k = 0; k < list->size(); ++k) {
          auto id = persistentId((*list)[k], at + ".songs[" + std::to_string(k) + "]");
          bool known = false;
          for (const auto& song : f.songs) known = known || song.persistentID == id;
          if (!known) throw Bad{at + ".songs: no song " + std::to_string(id)};
          album.songs.push_back(id);
        }
      }
      f.musicAlbums.push_back(std::move(album));
    }
  } else {
    // Without albums, songs are grouped by album title in order of first appearance.
    for (const auto& song : f.songs) {
      auto it = std::find_if(f.musicAlbums.begin(), f.musicAlbums.end(),
                             [&](const auto& album) { return album.title == song.albumTitle; });
      if (it == f.musicAlbums.end()) {
        f.musicAlbums.push_back({song.albumTitle, {}});
        it = f.musicAlbums.end() - 1;
      }
      it->songs.push_back(song.persistentID);
    }
  }
}

std::optional<Fixture::Network> readNetwork(const json& v) {
  if (v.is_null()) return std::nullopt;
  if (!v.is_object()) throw Bad{"network: expected an object or null"};
  Fixture::Network n;
  if (auto r = member(v, "reachable")) n.reachable = boolean(*r, "network.reachable");
  if (auto c = member(v, "connectionRequired")) n.connectionRequired = boolean(*c, "network.connectionRequired");
  return n;
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
    if (auto v = member(j, "network")) f.network = readNetwork(*v);
    if (auto p = member(j, "preferences")) readPreferences(*p, f);
    if (auto p = member(j, "photos")) readPhotos(*p, f);
    if (auto m = member(j, "music")) readMusic(*m, f);
    auto readFiles = [&](const char* key, std::vector<Document>& into) {
      auto list = member(j, key);
      if (!list) return;
      if (!list->is_array()) throw Bad{std::string(key) + ": expected an array"};
      for (size_t i = 0; i < list->size(); ++i) {
        const json& d = (*list)[i];
        std::string at = std::string(key) + "[" + std::to_string(i) + "]";
        Document doc;
        auto name = member(d, "name");
        if (!name) throw Bad{at + ": a document needs a name"};
        doc.name = text(*name, at + ".name");
        if (doc.name.empty() || doc.name.find('/') != std::string::npos || doc.name == "." || doc.name == "..") {
          throw Bad{at + ".name: \"" + doc.name + "\" is no file name"};
        }
        if (auto s = member(d, "size")) doc.size = integer(*s, at + ".size");
        if (doc.size < 0) throw Bad{at + ".size: negative"};
        if (auto c = member(d, "contents")) {
          doc.contents = text(*c, at + ".contents");
          doc.size = static_cast<std::int64_t>(doc.contents->size());
        }
        doc.created = f.now;
        if (auto c = member(d, "created")) {
          if (c->is_null()) {
            doc.hasCreationDate = false;
          } else {
            doc.created = date(*c, at + ".created");
          }
        }
        into.push_back(std::move(doc));
      }
    };
    readFiles("documents", f.documents);
    readFiles("picker", f.picker);
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
