#include "app/VC/UICollectionViewExtension.h"

namespace nimbrel {

void deselectAllItems(UICollectionView& collectionView) {
  long sections = collectionView.numberOfSections();
  for (long s = 0; s < sections; ++s) {
    long items = collectionView.numberOfItemsInSection(s);
    for (long i = 0; i < items; ++i) collectionView.deselectItemAtIndexPath({s, i}, false);
  }
}

void selectAllItems(UICollectionView& collectionView) {
  long sections = collectionView.numberOfSections();
  for (long s = 0; s < sections; ++s) {
    long items = collectionView.numberOfItemsInSection(s);
    for (long i = 0; i < items; ++i) collectionView.selectItemAtIndexPath({s, i}, false, 0);
  }
}

}  // namespace nimbrel
