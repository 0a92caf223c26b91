#include "app/core/RecentFilesCollectionViewCell.h"

namespace nimbrel {

std::shared_ptr<RecentFilesCollectionViewCell> RecentFilesCollectionViewCell::make() {
  auto cell = std::make_shared<RecentFilesCollectionViewCell>(CGRectMake(0, 0, 127, 127));
  cell->fileImg = std::make_shared<UIImageView>(CGRectMake(8, 8, 111, 111));
  cell->fileImg->setContentMode(UIViewContentMode::scaleAspectFill);
  cell->fileImg->setClipsToBounds(true);
  cell->fileName = std::make_shared<UILabel>(CGRectMake(8, 100, 111, 20));
  cell->moreFilesView = std::make_shared<UIView>(CGRectMake(8, 8, 111, 111));
  cell->moreFilesView->setBackgroundColor(UIColor::blackColor().withAlphaComponent(0.45));
  cell->moreFilesView->setHidden(true);
  cell->addSubview(cell->fileImg);
  cell->addSubview(cell->fileName);
  cell->addSubview(cell->moreFilesView);
  cell->registerOutlet("fileName", cell->fileName);
  cell->registerOutlet("moreFilesView", cell->moreFilesView);
  cell->registerOutlet("fileImg", cell->fileImg);
  return cell;
}

}  // namespace nimbrel
