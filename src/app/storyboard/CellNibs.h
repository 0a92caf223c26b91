#pragma once

namespace nimbrel {

// The cell layouts of the browse screens: album and item cells in grid and list form, and the two
// ad-row layouts. All make an albumsCollectionViewCell.
void registerCellNibs();

}  // namespace nimbrel
