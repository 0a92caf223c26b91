#include "platform/uikit/UICollectionViewCell.h"

void UICollectionViewCell::setSelected(bool selected) {
  selected_ = selected;
  didChange();
}
