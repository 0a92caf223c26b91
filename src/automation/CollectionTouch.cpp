#include "automation/CollectionTouch.h"

#include <algorithm>
#include <memory>

#include "platform/uikit/UICollectionView.h"
#include "platform/uikit/UIGestureRecognizer.h"

namespace nimbrel {

std::optional<std::string> touchCollection(UICollectionView& collection, std::optional<long> row,
                                           bool longPress) {
  collection.layoutSubviews();
  std::optional<NSIndexPath> path;
  CGPoint point;
  if (!row) {
    // Below the last row: a place in the collection where no cell is.
    point = {1, std::max(collection.contentSize().height, 0.0) + 1};
  } else {
    long count = collection.numberOfItemsInSection(0);
    if (*row < 0 || *row >= count) {
      return "row " + std::to_string(*row) + " is not in the collection (" + std::to_string(count) + " rows)";
    }
    path = NSIndexPath{0, *row};
    point = collection.centerOfItemAtIndexPath(*path);
  }
  auto recognizerOfKind = [&](bool wantLongPress) -> std::shared_ptr<UIGestureRecognizer> {
    for (const auto& g : collection.gestureRecognizers()) {
      bool isLong = std::dynamic_pointer_cast<UILongPressGestureRecognizer>(g) != nullptr;
      bool isTap = std::dynamic_pointer_cast<UITapGestureRecognizer>(g) != nullptr;
      if (g->isEnabled() && ((wantLongPress && isLong) || (!wantLongPress && isTap))) return g;
    }
    return nullptr;
  };
  if (longPress) {
    auto recognizer = recognizerOfKind(true);
    if (!recognizer) return "the collection has no long-press recogniser in place";
    recognizer->recognize(UIGestureRecognizerState::began, point);
    recognizer->recognize(UIGestureRecognizerState::ended, point);
  } else if (auto recognizer = recognizerOfKind(false)) {
    recognizer->recognize(UIGestureRecognizerState::ended, point);
  } else if (path) {
    collection.userTapItemAtIndexPath(*path);
  }
  return std::nullopt;
}

}  // namespace nimbrel
