#include "backends/desktop/StoredListCleaner.h"

#include <filesystem>

#include "backends/desktop/index/PreferencesFile.h"
#include "platform/foundation/BinaryPropertyList.h"
#include "platform/foundation/Diagnostics.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/foundation/URL.h"
#include "platform/mediaplayer/MPMediaItem.h"
#include "platform/mediaplayer/MPMediaQuery.h"
#include "platform/photos/PHAsset.h"
#include "platform/photos/PhotoLibrarySource.h"

namespace nimbrel::desktop {

namespace fs = std::filesystem;

namespace {

// A record's address as the program decodes it: {"relative": text, "base": another such}.
std::optional<URL> addressOf(const PlistValue* form) {
  if (!form || !form->isDictionary()) return std::nullopt;
  const PlistValue* relative = form->find("relative");
  if (!relative || !relative->isString()) return std::nullopt;
  if (const PlistValue* base = form->find("base")) {
    auto baseURL = addressOf(base);
    return baseURL ? URL::withStringRelativeTo(relative->string(), *baseURL) : std::nullopt;
  }
  return URL::withString(relative->string());
}

bool missing(const std::string& path) {
  std::error_code ec;
  return !path.empty() && !fs::exists(path, ec) && !ec;
}

}  // namespace

StoredListCleaner::StoredListCleaner(std::string preferencesPath, Rules rules)
    : preferencesPath_(std::move(preferencesPath)), rules_(std::move(rules)) {}

bool StoredListCleaner::isGone(const PlistValue& record) {
  if (!record.isDictionary()) return false;
  auto url = addressOf(record.find("url"));
  const PlistValue* kind = record.find("filetype");
  if (!url || !kind || !kind->isString()) return false;
  const std::string& type = kind->string();
  if (type == "photo" || type == "video") {
    // The index may not have seen the deletion yet: the file itself decides as well.
    auto found = PHAsset::fetchAssetsWithALAssetURLs({*url}, nullptr);
    if (found.count() == 0) return true;
    auto known = PhotoLibrarySource::current()->asset(found.firstObject()->localIdentifier());
    return known && missing(known->backingPath);
  }
  if (type == "music") {
    // The same query the program's readers make: the persistent id after the 32-character head.
    const std::string& address = url->absoluteString();
    auto query = MPMediaQuery::songsQuery();
    query->addFilterPredicate(MPMediaPropertyPredicate::predicateWithValue(
        address.size() > 32 ? address.substr(32) : std::string(), MPMediaItemPropertyPersistentID,
        MPMediaPredicateComparison::contains));
    auto items = query->items();
    if (!items || items->empty()) return true;
    return missing(items->front()->record()->backingPath);
  }
  if (type == "docs") return url->isFileURL() && missing(url->path());
  return false;
}

StoredListCleaner::Outcome StoredListCleaner::clean() {
  Outcome outcome;
  auto& defaults = NSUserDefaults::standardUserDefaults();
  PlistValue::Dictionary aside;
  std::vector<std::string> asideWhy;
  bool changed = false;
  for (const auto& key : rules_.keys) {
    auto bytes = defaults.dataForKey(key);
    if (!bytes) continue;
    if (auto why = rules_.decodeError ? rules_.decodeError(*bytes) : std::nullopt) {
      aside.emplace_back(key, PlistValue(std::move(*bytes)));
      asideWhy.push_back(*why);
      continue;
    }
    auto root = BinaryPropertyList::read(*bytes);
    if (!root || !root->isArray()) continue;
    PlistValue::Array kept;
    size_t before = root->array().size();
    for (const auto& record : root->array()) {
      if (!isGone(record)) {
        kept.push_back(record);
        continue;
      }
      std::string address = addressOf(record.find("url"))->absoluteString();
      Diagnostics::report("Removed " + address + " from the stored list \"" + key + "\": its file is gone");
      outcome.removed.push_back(std::move(address));
    }
    if (kept.size() == before) continue;
    auto rewritten = BinaryPropertyList::write(PlistValue(std::move(kept)));
    if (!rewritten) continue;
    defaults.setObject(PlistValue(std::move(*rewritten)), key);
    changed = true;
  }
  if (!aside.empty()) {
    std::string path = PreferencesFile::asidePath(preferencesPath_);
    bool keptAside = PreferencesFile(path).save(aside);
    for (size_t i = 0; i < aside.size(); ++i) {
      // Even when it cannot be kept it has to go: the program would end at every start.
      Diagnostics::report("The stored list \"" + aside[i].first + "\" could not be read (" + asideWhy[i] + "); " +
                          (keptAside ? "kept in " + path : "it could not be kept and was dropped"));
      defaults.removeObjectForKey(aside[i].first);
    }
    if (keptAside) outcome.keptAside = path;
    changed = true;
  }
  if (changed) defaults.synchronize();
  if (!outcome.removed.empty() && rules_.forget) rules_.forget(outcome.removed);
  return outcome;
}

}  // namespace nimbrel::desktop
