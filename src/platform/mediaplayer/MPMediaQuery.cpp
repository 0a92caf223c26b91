#include "platform/mediaplayer/MPMediaQuery.h"

#include <map>

#include "platform/mediaplayer/MediaLibrarySource.h"

MPMediaPropertyPredicate MPMediaPropertyPredicate::predicateWithValue(Value value, std::string property,
                                                                      MPMediaPredicateComparison comparison) {
  MPMediaPropertyPredicate p;
  p.value_ = std::move(value);
  p.property_ = std::move(property);
  p.comparison_ = comparison;
  return p;
}

namespace {

// The text form of a property's value, as the comparison sees it.
std::optional<std::string> textOf(const MPMediaItem& item, const std::string& property) {
  if (property == MPMediaItemPropertyPersistentID) return std::to_string(item.persistentID());
  auto v = item.valueForProperty(property);
  if (!v) return std::nullopt;
  if (v->isString()) return v->string();
  if (v->isInteger()) return std::to_string(v->integer());
  return std::nullopt;
}

std::string textOf(const MPMediaPropertyPredicate::Value& value) {
  if (auto s = std::get_if<std::string>(&value)) return *s;
  if (auto i = std::get_if<std::int64_t>(&value)) return std::to_string(*i);
  return std::to_string(std::get<std::uint64_t>(value));
}

}  // namespace

bool MPMediaPropertyPredicate::matches(const MPMediaItem& item) const {
  auto have = textOf(item, property_);
  if (!have) return false;
  std::string want = textOf(value_);
  if (comparison_ == MPMediaPredicateComparison::contains) return have->find(want) != std::string::npos;
  return *have == want;
}

std::shared_ptr<MPMediaQuery> MPMediaQuery::songsQuery() {
  return std::make_shared<MPMediaQuery>(Grouping::title);
}

std::shared_ptr<MPMediaQuery> MPMediaQuery::albumsQuery() {
  return std::make_shared<MPMediaQuery>(Grouping::album);
}

std::optional<std::vector<std::shared_ptr<MPMediaItem>>> MPMediaQuery::items() const {
  std::vector<std::shared_ptr<MPMediaItem>> out;
  for (const auto& record : MediaLibrarySource::current()->songs()) {
    auto item = std::make_shared<MPMediaItem>(record);
    bool keep = true;
    for (const auto& p : predicates_) keep = keep && p.matches(*item);
    if (keep) out.push_back(std::move(item));
  }
  return out;
}

std::vector<std::shared_ptr<MPMediaItemCollection>> MPMediaQuery::collections() const {
  auto matching = *items();
  std::vector<std::shared_ptr<MPMediaItemCollection>> out;
  if (grouping_ == Grouping::title) {
    for (auto& item : matching) out.push_back(MPMediaItemCollection::collectionWithItems({item}));
    return out;
  }
  std::map<std::uint64_t, std::shared_ptr<MPMediaItem>> byId;
  for (const auto& item : matching) byId[item->persistentID()] = item;
  for (const auto& album : MediaLibrarySource::current()->albums()) {
    std::vector<std::shared_ptr<MPMediaItem>> songs;
    for (auto id : album.songs) {
      if (auto it = byId.find(id); it != byId.end()) songs.push_back(it->second);
    }
    if (!songs.empty()) out.push_back(MPMediaItemCollection::collectionWithItems(std::move(songs)));
  }
  return out;
}
