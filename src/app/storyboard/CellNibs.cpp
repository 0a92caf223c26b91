#include "app/storyboard/CellNibs.h"

#include "app/media/albumsCollectionViewCell.h"
#include "platform/uikit/UINib.h"

namespace nimbrel {

namespace {

enum class Form { grid, list };

std::shared_ptr<albumsCollectionViewCell> makeCell(Form form, bool album) {
  auto cell = std::make_shared<albumsCollectionViewCell>(form == Form::grid ? CGRectMake(0, 0, 130, 180)
                                                                            : CGRectMake(0, 0, 390, 120));
  double w = cell->bounds().width();
  double h = cell->bounds().height();
  auto image = std::make_shared<UIImageView>(form == Form::grid ? CGRectMake(4, 4, w - 8, album ? h - 58 : h - 8)
                                                                : CGRectMake(12, 8, h - 16, h - 16));
  image->setContentMode(UIViewContentMode::scaleAspectFill);
  image->setClipsToBounds(true);
  image->setBackgroundColor(UIColor::white(0.93));
  auto labels = std::make_shared<UIView>(form == Form::grid ? CGRectMake(4, h - 54, w - 8, 50)
                                                            : CGRectMake(h + 4, 8, w - h - 16, h - 16));
  auto name = std::make_shared<UILabel>(CGRectMake(8, 4, labels->bounds().width() - 16, 20));
  name->setFont(UIFont::boldSystemFontOfSize(15));
  auto count = std::make_shared<UILabel>(CGRectMake(8, 26, labels->bounds().width() - 16, 18));
  count->setFont(UIFont::systemFontOfSize(13));
  count->setTextColor(UIColor::grayColor());
  labels->addSubview(name);
  labels->addSubview(count);
  auto checkmark = std::make_shared<CheckmarkView>(form == Form::grid ? CGRectMake(w - 32, 8, 24, 24)
                                                                      : CGRectMake(w - 40, h / 2 - 12, 24, 24));
  checkmark->setHidden(true);
  cell->addSubview(image);
  cell->addSubview(labels);
  cell->addSubview(checkmark);
  cell->albumImg = image;
  cell->lblAlbumName = name;
  cell->lblNoOfItems = count;
  cell->checkmarkView = checkmark;
  cell->setLblView(labels);
  cell->registerOutlet("albumImg", image);
  cell->registerOutlet("lblAlbumName", name);
  cell->registerOutlet("lblNoOfItems", count);
  cell->registerOutlet("checkmarkView", checkmark);
  return cell;
}

void registerLayout(const char* nib, Form form, bool album) {
  UINib::registerNib(nib, [form, album] { return std::vector<std::shared_ptr<NSObject>>{makeCell(form, album)}; });
}

}  // namespace

void registerCellNibs() {
  registerLayout("AlbumGridCollectionCell", Form::grid, true);
  registerLayout("AlbumListCollectionCell", Form::list, true);
  registerLayout("ImagesGridCollectionCell", Form::grid, false);
  registerLayout("ImagesListCollectionCell", Form::list, false);
  registerLayout("NativeAdAlbumListCell", Form::list, true);
  registerLayout("NativeAdAlbumGridCell", Form::grid, true);
}

}  // namespace nimbrel
