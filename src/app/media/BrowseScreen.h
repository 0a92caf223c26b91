#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/ads/AppLovinNativeAdManual.h"
#include "app/kit/CheckmarkView.h"
#include "app/media/AlbumModel.h"
#include "app/media/AlbumsViewModel.h"
#include "app/media/BrowseSizes.h"
#include "app/media/MediaTypes.h"
#include "app/media/PhotosViewModel.h"
#include "app/media/Settings.h"
#include "app/media/albumsCollectionViewCell.h"
#include "platform/libs/MGCollapsingHeaderView.h"
#include "platform/photos/PHAssetCollection.h"
#include "platform/photos/PHImageManager.h"
#include "platform/uikit/NSLayoutConstraint.h"
#include "platform/uikit/UIActivityViewController.h"
#include "platform/uikit/UIButton.h"
#include "platform/uikit/UICollectionView.h"
#include "platform/uikit/UIGestureRecognizer.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UIViewController.h"

namespace nimbrel {

// The frame the five browse screens share: a collection of albums or of one album's items under a
// collapsing header, with a path bar, selection mode (long press or "Edit"), a bottom edit bar, a
// bottom ad and the grid-or-list switch. `AlbumList` is the list of the album level
// (AlbumsViewModel, or PhotosViewModel where one list of items stands at the album flag). Each
// screen fills the hooks below; nothing of the frame is repeated in a screen.
template <class AlbumList>
class BrowseScreen : public UIViewController,
                     public UICollectionViewDataSource,
                     public UICollectionViewDelegate,
                     public UICollectionViewDataSourcePrefetching,
                     public MGCollapsingHeaderDelegate {
 public:
  BrowseScreen();

  // Outlets with rules attached.
  std::shared_ptr<UIImageView> imgFav;
  std::shared_ptr<MGCollapsingHeaderView> HEADERView;
  std::shared_ptr<NSLayoutConstraint> heightOfHeaderViewConstant;
  std::shared_ptr<UIView> expandableTitleView;
  std::shared_ptr<UIView> TitleView;
  std::shared_ptr<UILabel> lblAboveTitle;
  std::shared_ptr<UILabel> lblBelowTitle;
  std::shared_ptr<UILabel> lblMainFolderName;
  std::shared_ptr<UILabel> lbSubFolderName;
  std::shared_ptr<UIView> lastsubImagesAerrowView;
  std::shared_ptr<NSLayoutConstraint> subVFolderNameWidthConstant;
  std::shared_ptr<UIImageView> imgGridOrList;
  std::shared_ptr<UICollectionView> albumsCollectionView;
  std::shared_ptr<UIView> BottomAdView;
  std::shared_ptr<UIView> SelectEditView;
  std::shared_ptr<UIView> headerSelectionView;
  std::shared_ptr<UIView> closeBtnView;
  std::shared_ptr<UIButton> selectALLBtn;
  std::shared_ptr<CheckmarkView> selectAllCehckmark;
  std::shared_ptr<UIButton> btnMrnu;

  // State.
  MediaTypes mediatype = MediaTypes::image;
  PHFetchResult<PHAsset> fetchResult;
  std::shared_ptr<AlbumList> viewModel = std::make_shared<AlbumList>();
  std::shared_ptr<PhotosViewModel> photoViewModel = std::make_shared<PhotosViewModel>();
  std::shared_ptr<Settings> settings = std::make_shared<Settings>();
  std::shared_ptr<AppLovinNativeAdManual> appLovinNativeAd = std::make_shared<AppLovinNativeAdManual>();
  bool isAlBumsDisplay = true;
  long currentSelectedAlbumIndex = 0;
  bool isList = false;
  std::vector<std::shared_ptr<PHAssetCollection>> albums;
  std::shared_ptr<PHImageManager> imageManager = PHCachingImageManager::defaultManager();
  std::shared_ptr<UITapGestureRecognizer> tap;
  std::shared_ptr<UILongPressGestureRecognizer> longPress;

  void viewDidLoad() override;
  void viewWillAppear(bool animated) override;
  void viewDidAppear(bool animated) override {}

  // Collection data source, delegate and prefetching.
  long collectionViewNumberOfItemsInSection(UICollectionView& collectionView, long section) override;
  std::shared_ptr<UICollectionViewCell> collectionViewCellForItemAtIndexPath(
      UICollectionView& collectionView, const NSIndexPath& indexPath) override;
  CGSize collectionViewLayoutSizeForItemAtIndexPath(UICollectionView& collectionView,
                                                    const NSIndexPath& indexPath) override;
  void collectionViewDidSelectItemAtIndexPath(UICollectionView& collectionView, const NSIndexPath& indexPath) override;
  void collectionViewDidDeselectItemAtIndexPath(UICollectionView& collectionView, const NSIndexPath& indexPath) override;
  void collectionViewPrefetchItemsAtIndexPaths(UICollectionView& collectionView,
                                               const std::vector<NSIndexPath>& indexPaths) override;
  void collectionViewCancelPrefetchingForItemsAtIndexPaths(UICollectionView& collectionView,
                                                           const std::vector<NSIndexPath>& indexPaths) override {}
  void scrollViewDidScroll(UIScrollView& scrollView) override;

  // Header.
  void headerDidCollapseToOffset(double offset) override {}
  void headerDidFinishCollapsing() override;
  void headerDidExpandToOffset(double offset) override {}
  void headerDidFinishExpanding() override;

  // Actions.
  void handleLongPressWithLongPressGestureRecognizer(const std::shared_ptr<NSObject>& sender);
  void tappingWithLongPressGestureRecognizer(const std::shared_ptr<NSObject>& sender);
  void onDeleteBtn(const std::shared_ptr<NSObject>& sender);
  void onCloseBtn(const std::shared_ptr<NSObject>& sender) { leaveSelectionMode(); }
  void onSelectAllBtn(const std::shared_ptr<NSObject>& sender);
  void onBackBtn(const std::shared_ptr<NSObject>& sender);
  void onMenuBtn(const std::shared_ptr<NSObject>& sender);
  void onGridOrListBtn(const std::shared_ptr<NSObject>& sender);
  void onMainFolderBtn(const std::shared_ptr<NSObject>& sender);
  void onDeletBtn(const std::shared_ptr<NSObject>& sender);
  void onShareBtn(const std::shared_ptr<NSObject>& sender);
  void onInfoBtn(const std::shared_ptr<NSObject>& sender);

  // Frame operations the screens build on.
  // The layouts, the data source and delegates, the selection flags and both recognisers.
  void setUpCollection();
  bool isSelectionModeOn() const;
  // Steps 1 to 6 shared by a long press and "Edit".
  void enterSelectionMode();
  // Leaves selection mode at either level ("Close").
  void leaveSelectionMode();
  // Installs the selection closure on the list that was just loaded and runs it once.
  void installDidToggleSelectionOnItems();
  void installDidToggleSelectionOnAlbums();
  // The path bar's way back that keeps the loaded list: the selection chrome goes, the list is
  // drawn again, nothing is read.
  void backToAlbumsKeepingList();
  // "Edit" run on the item list, where the album flag holds the one list: the chrome shows, but
  // no row of the list on show is marked until one is touched.
  void enterSelectionModeOnItemList();
  // Back to the album level with a fresh load; `fromMenu` is false after a delete.
  void returnToAlbumLevel(bool fromMenu);
  // Path bar and item load for album `row`.
  void openAlbumAtRow(long row);
  // The common end of a share: the sheet, anchored at the button on a pad, then selection mode ends.
  void presentShareSheet(std::vector<UIActivityViewController::Item> items, const std::shared_ptr<NSObject>& sender);
  // Thumbnail of `asset` into the cell's image view.
  void requestThumbnail(albumsCollectionViewCell& cell, const std::shared_ptr<PHAsset>& asset);
  long levelCount() const;
  long levelSelectedCount() const;

 protected:
  // Hooks.
  virtual BrowseSizes sizes() const { return {}; }
  // Ask for the access this screen's list needs; run `granted` on the main queue when it is given.
  virtual void requestAccess(std::function<void()> granted) = 0;
  // The first load of the album level (and of the single list where there is no item level).
  virtual void firstLoad() = 0;
  // The reload started by the path bar and after a delete.
  virtual void reloadAlbums() { firstLoad(); }
  // What the items of album `row` are: the records of the item level.
  virtual void loadItemsOfAlbum(long row) {}
  virtual std::string albumNameAtRow(long row) const { return {}; }
  // A tap outside selection mode; the album level of a screen with items opens the album.
  virtual void openAlbumLevelRow(long row) { openAlbumAtRow(row); }
  virtual void openItemLevelRow(long row) {}
  virtual void configureAlbumCell(albumsCollectionViewCell& cell, long row) {}
  virtual void configureItemCell(albumsCollectionViewCell& cell, long row) {}
  // A row that stands for an ad, not an item.
  virtual bool isAdRow(long row) const { return false; }
  virtual std::shared_ptr<UICollectionViewCell> makeAdRowCell() { return std::make_shared<UICollectionViewCell>(); }
  virtual std::vector<std::string> menuEntries() const;
  virtual void menuChose(const std::string& entry);
  // Where selection mode lives: the item level, or the one list at the album flag.
  virtual bool selectionAtAlbumLevel() const { return false; }
  // Whose flags the album list's selection closure sets outside selection mode: the item list's
  // on a screen with albums, the list's own where it holds the items.
  virtual bool closureMarksItemList() const { return !selectionAtAlbumLevel(); }
  // A list of items at the album flag is drawn with the item layouts.
  virtual bool albumLevelUsesItemLayouts() const { return false; }
  // Some screens take the tap recogniser off the collection in selection mode; others only
  // disable it.
  virtual bool detachesTapInSelectionMode() const { return true; }
  virtual bool offersInterstitialAtLoad() const { return false; }
  // A screen whose collection comes to life only once its list has loaded says false.
  virtual bool setsUpCollectionAtLoad() const { return true; }
  virtual size_t shareLimit() const { return static_cast<size_t>(-1); }
  // Gathers what is shared for the selected items and calls `share` with it (or never).
  virtual void gatherShareItems(const std::shared_ptr<NSObject>& sender,
                                std::function<void(std::vector<UIActivityViewController::Item>)> share) {}
  virtual void deleteSelectedItems() {}
  virtual void deleteFirstSelectedAlbum() {}
  virtual void showInfoForSelection() {}
  virtual void logPrefetch(long row) {}

  bool atItemLevel() const { return !isAlBumsDisplay; }
  // The list of the level in force: the albums at the album flag, the items otherwise.
  bool levelIsAlbumList() const { return isAlBumsDisplay; }
  template <class F>
  void withLevelList(F&& f) {
    if (levelIsAlbumList()) {
      f(*viewModel);
    } else {
      f(*photoViewModel);
    }
  }
  template <class F>
  void withLevelList(F&& f) const {
    if (levelIsAlbumList()) {
      f(static_cast<const AlbumList&>(*viewModel));
    } else {
      f(static_cast<const PhotosViewModel&>(*photoViewModel));
    }
  }
  void setTapInPlace(bool enabled, bool attached);
  std::weak_ptr<BrowseScreen> weakScreen() { return this->template weakSelf<BrowseScreen>(); }

 private:
  void setUpHeader();
  void registerLayouts();
  void setGridOrListIcon();
  template <class List>
  void didToggleSelection(List& list, bool hasSelection, bool albumClosure);
};

}  // namespace nimbrel
