#include "app/storyboard/BrowseScene.h"

#include "app/kit/AppThemeColor.h"
#include "app/storyboard/SceneBuilder.h"
#include "platform/uikit/UIScreen.h"

namespace nimbrel {

template <class AlbumList>
void buildBrowseScene(BrowseScreen<AlbumList>& screen, const BrowseSceneTexts& texts) {
  SceneBuilder scene(screen);
  auto root = scene.root();
  root->setBackgroundColor(UIColor::white(0.97));
  const double w = UIScreen::mainScreen().bounds().width();
  const double h = UIScreen::mainScreen().bounds().height();
  const double header = 120, pathBar = 44, ad = 64, editBar = 60;
  AppThemeColor theme;

  screen.HEADERView = scene.outlet<MGCollapsingHeaderView>("HEADERView", root, CGRectMake(0, 0, w, header));
  screen.heightOfHeaderViewConstant = scene.constraint("heightOfHeaderViewConstant", header);
  screen.TitleView = scene.outlet<UIView>("TitleView", screen.HEADERView, CGRectMake(56, 0, w - 112, 44));
  screen.TitleView->setHidden(true);
  auto back = scene.outlet<UIButton>("btnBack", screen.HEADERView, CGRectMake(8, 2, 40, 40));
  back->setImage(UIImage::named("ic_back"));
  scene.wire(back, "onBackBtn:");
  screen.btnMrnu = scene.outlet<UIButton>("btnMrnu", screen.HEADERView, CGRectMake(w - 48, 2, 40, 40));
  screen.btnMrnu->setImage(UIImage::named("ic_menu"));
  scene.wire(screen.btnMrnu, "onMenuBtn:");
  auto gridOrList = scene.outlet<UIButton>("btnGridOrList", screen.HEADERView, CGRectMake(w - 92, 2, 40, 40));
  scene.wire(gridOrList, "onGridOrListBtn:");
  screen.imgGridOrList = scene.outlet<UIImageView>("imgGridOrList", gridOrList, CGRectMake(8, 8, 24, 24));
  screen.expandableTitleView = scene.outlet<UIView>("expandableTitleView", screen.HEADERView, CGRectMake(0, 48, w, 72));
  screen.lblAboveTitle = scene.outlet<UILabel>("lblAboveTitle", screen.expandableTitleView, CGRectMake(16, 0, w - 32, 20));
  screen.lblAboveTitle->setText(texts.aboveTitle);
  screen.lblAboveTitle->setTextColor(UIColor::grayColor());
  screen.lblBelowTitle = scene.outlet<UILabel>("lblBelowTitle", screen.expandableTitleView, CGRectMake(16, 22, w - 32, 40));
  screen.lblBelowTitle->setText(texts.belowTitle);
  screen.lblBelowTitle->setFont(UIFont::boldSystemFontOfSize(32));
  scene.outlet<UILabel>("lblTitleNoOfAlbums", screen.expandableTitleView, CGRectMake(w - 120, 30, 104, 20));
  scene.outlet<UILabel>("lblNoOfItems", screen.expandableTitleView, CGRectMake(w - 120, 50, 104, 20));

  // The selection chrome in the header.
  screen.headerSelectionView = scene.outlet<UIView>("headerSelectionView", screen.HEADERView, CGRectMake(0, 0, w, 44));
  screen.headerSelectionView->setHidden(true);
  screen.headerSelectionView->setBackgroundColor(UIColor::white(0.97));
  screen.closeBtnView = scene.outlet<UIView>("closeBtnView", screen.headerSelectionView, CGRectMake(8, 2, 40, 40));
  screen.closeBtnView->setHidden(true);
  auto close = scene.outlet<UIButton>("closebtn", screen.closeBtnView, CGRectMake(0, 0, 40, 40));
  close->setImage(UIImage::named("ic_close"));
  scene.wire(close, "onCloseBtn:");
  screen.selectALLBtn = scene.outlet<UIButton>("selectALLBtn", screen.headerSelectionView, CGRectMake(w - 150, 2, 110, 40));
  screen.selectALLBtn->setHidden(true);
  screen.selectALLBtn->setTitle(std::string("Select All"));
  screen.selectALLBtn->setTitleColor(theme.AppTheme());
  scene.wire(screen.selectALLBtn, "onSelectAllBtn:");
  screen.selectAllCehckmark = scene.outlet<CheckmarkView>("selectAllCehckmark", screen.headerSelectionView,
                                                          CGRectMake(w - 36, 10, 24, 24));

  // The path bar.
  auto pathBarView = scene.outlet<UIView>("segmentView", root, CGRectMake(0, header, w, pathBar));
  screen.lblMainFolderName = scene.outlet<UILabel>("lblMainFolderName", pathBarView, CGRectMake(16, 12, 120, 20));
  screen.lblMainFolderName->setText(texts.mainFolderName);
  screen.lblMainFolderName->setTextColor(theme.AppTheme());
  auto mainFolder = scene.outlet<UIButton>("btnMainFolder", pathBarView, CGRectMake(16, 6, 120, 32));
  scene.wire(mainFolder, "onMainFolderBtn:");
  screen.lastsubImagesAerrowView = scene.outlet<UIImageView>("lastsubImagesAerrowView", pathBarView, CGRectMake(140, 14, 16, 16));
  screen.lastsubImagesAerrowView->setHidden(true);
  screen.lbSubFolderName = scene.outlet<UILabel>("lbSubFolderName", pathBarView, CGRectMake(160, 12, 100, 20));
  screen.lbSubFolderName->setHidden(true);
  screen.subVFolderNameWidthConstant = scene.constraint("subVFolderNameWidthConstant", 100);
  auto pathImages = scene.outlet<UIButton>("btnPathImages", pathBarView, CGRectMake(160, 6, 100, 32));
  scene.wire(pathImages, "onPathImagesBtn:");
  scene.outlet<UIView>("pagingView", pathBarView, CGRectMake(0, pathBar - 1, w, 1));
  scene.outlet<UIView>("albumImagesStackView", pathBarView, CGRectMake(0, 0, w, pathBar));
  scene.constraint("widthOfAlbumImagesStackViewConstant", w);

  // The collection between the path bar and the ad.
  double top = header + pathBar;
  screen.albumsCollectionView = scene.outlet<UICollectionView>("albumsCollectionView", root,
                                                               CGRectMake(0, top, w, h - top - ad));
  // The bottom ad slot and the edit bar over it.
  screen.BottomAdView = scene.outlet<UIView>("BottomAdView", root, CGRectMake(0, h - ad, w, ad));
  scene.constraint("bottomViewHeightConstant", ad);
  screen.SelectEditView = scene.outlet<UIView>("SelectEditView", root, CGRectMake(0, h - ad - editBar, w, editBar));
  screen.SelectEditView->setHidden(true);
  screen.SelectEditView->setBackgroundColor(UIColor::whiteColor());
  scene.constraint("heightOfSelectEditViewConstant", editBar);
  struct Button {
    const char* name;
    const char* icon;
    std::string selector;
  };
  std::vector<Button> buttons = {{"btnShare", "ic_share", "onShareBtn:"},
                                 {"btnDelete", "ic_delete", "onDeletBtn:"},
                                 {"btnFav", "ic_unfav", texts.favouriteSelector},
                                 {"btnInfo", "ic_info", "onInfoBtn:"}};
  if (!texts.hasDelete) buttons.erase(buttons.begin() + 1);
  double slot = w / static_cast<double>(buttons.size());
  int i = 0;
  for (const auto& b : buttons) {
    auto button = scene.outlet<UIButton>(b.name, screen.SelectEditView, CGRectMake(i * slot, 0, slot, editBar));
    button->setImage(UIImage::named(b.icon));
    scene.wire(button, b.selector);
    if (std::string(b.name) == "btnFav" && texts.hasFavouriteImage) {
      screen.imgFav = scene.outlet<UIImageView>("imgFav", button, CGRectMake(slot / 2 - 12, 18, 24, 24));
      screen.imgFav->setImage(UIImage::named("ic_unfav"));
    }
    ++i;
  }
}

template void buildBrowseScene(BrowseScreen<AlbumsViewModel>&, const BrowseSceneTexts&);
template void buildBrowseScene(BrowseScreen<PhotosViewModel>&, const BrowseSceneTexts&);

}  // namespace nimbrel
