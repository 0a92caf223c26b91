#pragma once

#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "platform/foundation/NSObject.h"

struct NSSortDescriptor {
  std::string key;
  bool ascending = true;
};

// The predicates the program writes, as typed values.
struct PHPredicateMediaTypeIn {  // "mediaType IN %@"
  std::vector<int> mediaTypes;
};
struct PHPredicateTitleEquals {  // "title = %@"
  std::string title;
};
struct PHPredicateNonEmptyWithLocalizedTitle {  // "(estimatedAssetCount > 0) AND (localizedTitle == %@)"
  std::string title;
};
using PHPredicate = std::variant<std::monostate, PHPredicateMediaTypeIn, PHPredicateTitleEquals,
                                 PHPredicateNonEmptyWithLocalizedTitle>;

class PHFetchOptions : public NSObject {
 public:
  std::vector<NSSortDescriptor> sortDescriptors;
  PHPredicate predicate;
  // 0 means no limit.
  size_t fetchLimit = 0;
  // Every library asset is visible to the program's fetches; the flag is kept for what asks.
  bool includeHiddenAssets = false;

  std::shared_ptr<PHFetchOptions> copy() const { return std::make_shared<PHFetchOptions>(*this); }
};
