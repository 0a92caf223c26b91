#pragma once

#include <memory>

#include "platform/uikit/UICollectionViewCell.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uikit/UILabel.h"

namespace nimbrel {

// The home strip's cell: a picture, a hidden name, and the "more" mark of one row.
class RecentFilesCollectionViewCell : public UICollectionViewCell {
 public:
  static inline constexpr const char* kTypeName = "RecentFilesCollectionViewCell";
  using UICollectionViewCell::UICollectionViewCell;
  const char* className() const override { return kTypeName; }

  std::shared_ptr<UILabel> fileName;
  std::shared_ptr<UIView> moreFilesView;
  std::shared_ptr<UIImageView> fileImg;

  static std::shared_ptr<RecentFilesCollectionViewCell> make();
};

}  // namespace nimbrel
