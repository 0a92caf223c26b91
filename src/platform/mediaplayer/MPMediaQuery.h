#pragma once

#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/foundation/NSObject.h"
#include "platform/mediaplayer/MPMediaItem.h"
#include "platform/mediaplayer/MPMediaItemCollection.h"

enum class MPMediaPredicateComparison { equalTo = 0, contains = 1 };

// A filter on one property: equal to, or (for text forms) containing, a value.
class MPMediaPropertyPredicate {
 public:
  using Value = std::variant<std::string, std::int64_t, std::uint64_t>;
  static MPMediaPropertyPredicate predicateWithValue(Value value, std::string property,
                                                     MPMediaPredicateComparison comparison);
  bool matches(const MPMediaItem& item) const;

 private:
  Value value_;
  std::string property_;
  MPMediaPredicateComparison comparison_ = MPMediaPredicateComparison::equalTo;
};

// The songs query and the albums query of the music library.
class MPMediaQuery : public NSObject {
 public:
  enum class Grouping { title, album };
  static std::shared_ptr<MPMediaQuery> songsQuery();
  static std::shared_ptr<MPMediaQuery> albumsQuery();
  explicit MPMediaQuery(Grouping grouping) : grouping_(grouping) {}

  void addFilterPredicate(MPMediaPropertyPredicate predicate) { predicates_.push_back(std::move(predicate)); }
  // The matching songs in library order (never absent here; the platform answers nil only when
  // the library cannot be read).
  std::optional<std::vector<std::shared_ptr<MPMediaItem>>> items() const;
  // For the albums query: one collection per album; for the songs query: one per song.
  std::vector<std::shared_ptr<MPMediaItemCollection>> collections() const;

 private:
  Grouping grouping_;
  std::vector<MPMediaPropertyPredicate> predicates_;
};
