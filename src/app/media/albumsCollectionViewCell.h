#pragma once

#include <memory>
#include <variant>

#include "app/kit/CheckmarkView.h"
#include "platform/photos/PHAsset.h"
#include "platform/uikit/UICollectionViewCell.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uikit/UILabel.h"

namespace nimbrel {

class AlbumsViewModelItem;

// The one cell class of every list and grid layout of the browse screens.
class albumsCollectionViewCell : public UICollectionViewCell {
 public:
  static inline constexpr const char* kTypeName = "albumsCollectionViewCell";
  using UICollectionViewCell::UICollectionViewCell;
  const char* className() const override { return kTypeName; }

  std::shared_ptr<AlbumsViewModelItem> item;
  std::shared_ptr<CheckmarkView> checkmarkView;
  std::shared_ptr<UIView> lblView;
  std::shared_ptr<UILabel> lblNoOfItems;
  std::shared_ptr<UILabel> lblAlbumName;
  std::shared_ptr<UIImageView> albumImg;
  std::shared_ptr<PHAsset> asset;

  // Rounds the view's two bottom corners (radius 25) and clips it.
  void setLblView(std::shared_ptr<UIView> view);
  void awakeFromNib() override {}
  // The checkmark shows only in selection mode (the collection's tag 1) and follows the cell.
  void setSelected(bool selected) override;
};

}  // namespace nimbrel
