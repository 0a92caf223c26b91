#pragma once

#include <optional>
#include <string>

class UICollectionView;

namespace nimbrel {

// A person's touch on a collection, delivered the way the platform would: through an attached,
// enabled recogniser of the right kind, else (for a tap on a cell) the collection's own selection.
// `row` empty means the gap below the last cell. Returns the reason when the touch cannot happen.
// The automation protocol and the Qt shell both go through here.
std::optional<std::string> touchCollection(UICollectionView& collection, std::optional<long> row,
                                           bool longPress);

}  // namespace nimbrel
