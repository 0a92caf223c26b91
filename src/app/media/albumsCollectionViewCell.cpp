#include "app/media/albumsCollectionViewCell.h"

#include "platform/uikit/UICollectionView.h"

namespace nimbrel {

void albumsCollectionViewCell::setLblView(std::shared_ptr<UIView> view) {
  lblView = std::move(view);
  if (!lblView) return;
  lblView->updateLayer([](CALayer& layer) {
    layer.cornerRadius = 25;
    layer.maskedCorners = 12;  // the two bottom corners
  });
  lblView->setClipsToBounds(true);
}

void albumsCollectionViewCell::setSelected(bool selected) {
  UICollectionViewCell::setSelected(selected);
  if (!checkmarkView) return;
  if (auto collection = std::dynamic_pointer_cast<UICollectionView>(superview())) {
    checkmarkView->setHidden(collection->tag() != 1);
  }
  checkmarkView->setSelected(isSelected());
  checkmarkView->setNeedsDisplay();
}

}  // namespace nimbrel
