#pragma once

#include <QVariantMap>

#include <optional>
#include <vector>

#include "platform/foundation/URL.h"

class UICollectionView;

namespace nimbrel::shell {

// What a drag out of a screen's collection takes along. The rows are the screen's: in selection
// mode a drag from a selected cell takes every selected cell, any other drag its own cell. Each
// row stands for the address the program itself keeps for it (a photo-library item's, a song's, a
// document's, a recent or favourite file's), and the platform's share activities find the files behind
// those; the sim has none, so nothing is dragged there.
std::vector<long> draggedRows(const UICollectionView& collection, long row);
// None for an album, an ad, or a collection the rule does not know.
std::optional<URL> rowAddress(const UICollectionView& collection, long row);
// Whether the platform hands out files and the row stands for something: no file is looked for.
bool mayDrag(const UICollectionView& collection, long row);
// As QML's Drag.mimeData takes it, in the form Copy puts on the clipboard; empty when no file
// stands behind the rows.
QVariantMap dragMimeData(const UICollectionView& collection, long row);

}  // namespace nimbrel::shell
