#pragma once

#include "platform/uikit/UICollectionView.h"

namespace nimbrel {

// Deselects every item, section by section, in order, without animation.
void deselectAllItems(UICollectionView& collectionView);
// Selects every item of every section, without animation or scrolling.
void selectAllItems(UICollectionView& collectionView);

}  // namespace nimbrel
