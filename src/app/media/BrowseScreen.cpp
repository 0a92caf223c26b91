#include "app/media/BrowseScreen.h"

#include <string>

#include "app/ads/AppLovinAdId.h"
#include "app/ads/AppLovinInterstitialsAd.h"
#include "app/VC/PopupMenu.h"
#include "app/VC/UICollectionViewExtension.h"
#include "app/core/Constant.h"
#include "app/kit/AppThemeColor.h"
#include "app/media/Fetch.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/NSLog.h"
#include "platform/libs/SVProgressHUD.h"
#include "platform/uikit/UIDevice.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UINib.h"
#include "platform/uikit/UIStoryboard.h"

namespace nimbrel {

namespace {

// The six layouts, nib name to reuse identifier.
const std::pair<const char*, const char*> kLayouts[] = {
    {"AlbumGridCollectionCell", "albumGridCell"},          {"AlbumListCollectionCell", "albumListCell"},
    {"ImagesGridCollectionCell", "photosGridCell"},        {"ImagesListCollectionCell", "photosListCell"},
    {"NativeAdAlbumListCell", "nativeAlbumListCollectionCell"}, {"NativeAdAlbumGridCell", "nativeAlbumGridCollectionCell"},
};

using Sender = const std::shared_ptr<NSObject>&;

}  // namespace

template <class AlbumList>
BrowseScreen<AlbumList>::BrowseScreen() {
  auto bind = [this](const char* selector, void (BrowseScreen::*method)(Sender)) {
    registerAction(selector, [this, method](Sender sender) { (this->*method)(sender); });
  };
  bind("handleLongPressWithLongPressGestureRecognizer:", &BrowseScreen::handleLongPressWithLongPressGestureRecognizer);
  bind("tappingWithLongPressGestureRecognizer:", &BrowseScreen::tappingWithLongPressGestureRecognizer);
  bind("onCloseBtn:", &BrowseScreen::onCloseBtn);
  bind("onSelectAllBtn:", &BrowseScreen::onSelectAllBtn);
  bind("onBackBtn:", &BrowseScreen::onBackBtn);
  bind("onHomeBtn:", &BrowseScreen::onBackBtn);
  bind("onMenuBtn:", &BrowseScreen::onMenuBtn);
  bind("onGridOrListBtn:", &BrowseScreen::onGridOrListBtn);
  bind("onMainFolderBtn:", &BrowseScreen::onMainFolderBtn);
  bind("onShareBtn:", &BrowseScreen::onShareBtn);
  bind("onInfoBtn:", &BrowseScreen::onInfoBtn);
  registerAction("onSelectedItemsDeleteBtn:", [](Sender) {});
  registerAction("onPathImagesBtn:", [](Sender) {});
  isList = Constant::userDefaults().boolForKey("kIsListView");
}

// ---- Load and appearance ----

template <class AlbumList>
void BrowseScreen<AlbumList>::viewDidLoad() {
  UIViewController::viewDidLoad();
  auto self = this->template strongSelf<BrowseScreen>();
  // The load closure holds the screen strongly: it outlives its load.
  requestAccess([self] { self->firstLoad(); });
  setUpHeader();
  if (setsUpCollectionAtLoad()) setUpCollection();
  if (offersInterstitialAtLoad()) AppLovinInterstitialsAd::shared()->offerInterstitial();
  loadScreenNativeAd(appLovinNativeAd, this->template weakSelf<NSObject>(), BottomAdView);
}

template <class AlbumList>
void BrowseScreen<AlbumList>::setUpCollection() {
  auto self = this->template strongSelf<BrowseScreen>();
  registerLayouts();
  albumsCollectionView->setDelegate(std::shared_ptr<UICollectionViewDelegate>(self));
  albumsCollectionView->setDataSource(std::shared_ptr<UICollectionViewDataSource>(self));
  albumsCollectionView->setPrefetchDataSource(std::shared_ptr<UICollectionViewDataSourcePrefetching>(self));
  albumsCollectionView->setAllowsSelection(true);
  albumsCollectionView->setAllowsMultipleSelection(true);

  longPress = std::make_shared<UILongPressGestureRecognizer>(self, "handleLongPressWithLongPressGestureRecognizer:");
  longPress->minimumPressDuration = 0.3;
  albumsCollectionView->addGestureRecognizer(longPress);
  tap = std::make_shared<UITapGestureRecognizer>(self, "tappingWithLongPressGestureRecognizer:");
  albumsCollectionView->addGestureRecognizer(tap);
  registerOutlet("tap", tap);
  registerOutlet("longPress", longPress);
}

template <class AlbumList>
void BrowseScreen<AlbumList>::setUpHeader() {
  HEADERView->setDelegate(std::shared_ptr<MGCollapsingHeaderDelegate>(this->template strongSelf<BrowseScreen>()));
  HEADERView->setAlwaysCollapse(true);
  HEADERView->setMinimumHeaderHeight(44.0);
  HEADERView->setCollapsingConstraint(heightOfHeaderViewConstant);
  HEADERView->addTransformingSubview(expandableTitleView, {MGTransform::transformAttribute(5, -0.9)});
  heightOfHeaderViewConstant->setConstant(44.0);
  view()->layoutIfNeeded();
}

template <class AlbumList>
void BrowseScreen<AlbumList>::registerLayouts() {
  for (const auto& [nib, identifier] : kLayouts) {
    albumsCollectionView->registerNibForCellWithReuseIdentifier(UINib::nibWithNibName(nib), identifier);
  }
}

template <class AlbumList>
void BrowseScreen<AlbumList>::viewWillAppear(bool animated) {
  if (mediatype == MediaTypes::video) {
    for (const auto& label : {lblAboveTitle, lblBelowTitle, lblMainFolderName}) {
      if (label) label->setText("Videos");
    }
  }
  isList = Constant::userDefaults().boolForKey("kIsListView");
  albumsCollectionView->reloadData();
  setGridOrListIcon();
}

template <class AlbumList>
void BrowseScreen<AlbumList>::setGridOrListIcon() {
  // The icon names the layout the button leads to.
  imgGridOrList->setImage(UIImage::named(isList ? "grid" : "list"));
}

template <class AlbumList>
void BrowseScreen<AlbumList>::onGridOrListBtn(Sender) {
  isList = !isList;
  albumsCollectionView->reloadData();
  setGridOrListIcon();
  Constant::userDefaults().setValue(PlistValue(isList), "kIsListView");
}

// ---- Header ----

template <class AlbumList>
void BrowseScreen<AlbumList>::scrollViewDidScroll(UIScrollView& scrollView) {
  HEADERView->collapseWithScroll(scrollView);
}

template <class AlbumList>
void BrowseScreen<AlbumList>::headerDidFinishCollapsing() {
  TitleView->setHidden(false);
}

template <class AlbumList>
void BrowseScreen<AlbumList>::headerDidFinishExpanding() {
  TitleView->setHidden(true);
}

// ---- Collection ----

template <class AlbumList>
long BrowseScreen<AlbumList>::levelCount() const {
  long n = 0;
  withLevelList([&n](const auto& list) { n = static_cast<long>(list.items.size()); });
  return n;
}

template <class AlbumList>
long BrowseScreen<AlbumList>::levelSelectedCount() const {
  long n = 0;
  withLevelList([&n](const auto& list) { n = static_cast<long>(list.selectedItems().size()); });
  return n;
}

template <class AlbumList>
long BrowseScreen<AlbumList>::collectionViewNumberOfItemsInSection(UICollectionView&, long) {
  return levelCount();
}

template <class AlbumList>
CGSize BrowseScreen<AlbumList>::collectionViewLayoutSizeForItemAtIndexPath(UICollectionView& collectionView,
                                                                          const NSIndexPath&) {
  BrowseSizes table = sizes();
  double w = collectionView.bounds().width();
  bool albumLevel = isAlBumsDisplay;
  if (isList) return {w, albumLevel ? table.listAlbumHeight : table.listItemHeight};
  double width = Constant::isIpad() ? table.gridWidthPad(w) : table.gridWidthPhone(w);
  return {width, width + (albumLevel ? table.gridAlbumExtraHeight : table.gridItemExtraHeight)};
}

template <class AlbumList>
std::shared_ptr<UICollectionViewCell> BrowseScreen<AlbumList>::collectionViewCellForItemAtIndexPath(
    UICollectionView& collectionView, const NSIndexPath& indexPath) {
  long row = indexPath.item;
  if (isAdRow(row)) return makeAdRowCell();
  bool albumLayouts = isAlBumsDisplay && !albumLevelUsesItemLayouts();
  const char* identifier = albumLayouts ? (isList ? "albumListCell" : "albumGridCell")
                                        : (isList ? "photosListCell" : "photosGridCell");
  auto cell = std::dynamic_pointer_cast<albumsCollectionViewCell>(
      collectionView.dequeueReusableCellWithReuseIdentifier(identifier, indexPath));
  bool multiple = false;
  withLevelList([&multiple](const auto& list) { multiple = list.isMultipleSelectionEnabled; });
  if (cell->checkmarkView) {
    if (multiple) {
      cell->checkmarkView->setHidden(false);
      // The collection follows the cell here; the model's flag is not asked.
      if (cell->isSelected()) {
        collectionView.selectItemAtIndexPath(indexPath, false, 0);
      } else {
        collectionView.deselectItemAtIndexPath(indexPath, false);
      }
    } else {
      cell->checkmarkView->setHidden(true);
    }
  }
  if (isAlBumsDisplay) {
    configureAlbumCell(*cell, row);
  } else {
    configureItemCell(*cell, row);
  }
  return cell;
}

template <class AlbumList>
void BrowseScreen<AlbumList>::requestThumbnail(albumsCollectionViewCell& cell, const std::shared_ptr<PHAsset>& asset) {
  if (cell.tag() != 0) imageManager->cancelImageRequest(static_cast<PHImageRequestID>(cell.tag()));
  auto options = Fetch::shared()->preview()->photoOptions();
  std::weak_ptr<albumsCollectionViewCell> weakCell = cell.template strongSelf<albumsCollectionViewCell>();
  PHImageRequestID id = imageManager->requestImageForAsset(
      asset, cell.bounds().size, PHImageContentMode::aspectFill, options.get(),
      [weakCell](std::optional<UIImage> image, const PHImageRequestInfo&) {
        if (!image) return;
        DispatchQueue::main().async([weakCell, image] {
          auto c = weakCell.lock();
          if (c && c->albumImg) c->albumImg->setImage(image);
        });
      });
  cell.setTag(id);
}

template <class AlbumList>
void BrowseScreen<AlbumList>::collectionViewPrefetchItemsAtIndexPaths(UICollectionView&,
                                                                      const std::vector<NSIndexPath>& indexPaths) {
  for (const auto& path : indexPaths) logPrefetch(path.item);
}

// ---- Selection mode ----

template <class AlbumList>
bool BrowseScreen<AlbumList>::isSelectionModeOn() const {
  bool on = false;
  withLevelList([&on](const auto& list) { on = list.isMultipleSelectionEnabled; });
  return on;
}

template <class AlbumList>
void BrowseScreen<AlbumList>::setTapInPlace(bool enabled, bool attached) {
  if (!tap) return;  // a screen whose collection comes to life with its list
  tap->setEnabled(enabled);
  if (!detachesTapInSelectionMode()) return;
  if (attached) {
    albumsCollectionView->addGestureRecognizer(tap);
  } else {
    albumsCollectionView->removeGestureRecognizer(tap);
  }
}

template <class AlbumList>
void BrowseScreen<AlbumList>::enterSelectionMode() {
  withLevelList([](auto& list) { list.setAllSelected(true); });
  selectAllItems(*albumsCollectionView);
  closeBtnView->setHidden(false);
  selectALLBtn->setHidden(false);
  headerSelectionView->setHidden(false);
  withLevelList([](auto& list) { list.isMultipleSelectionEnabled = true; });
  albumsCollectionView->setTag(1);
  withLevelList([](auto& list) { list.setAllSelected(false); });
  deselectAllItems(*albumsCollectionView);
  setTapInPlace(false, false);
  selectALLBtn->setTitle(std::string("Select All"));
  selectAllCehckmark->setSelected(false);
  selectAllCehckmark->setNeedsDisplay();
}

template <class AlbumList>
void BrowseScreen<AlbumList>::handleLongPressWithLongPressGestureRecognizer(Sender sender) {
  auto recognizer = std::dynamic_pointer_cast<UIGestureRecognizer>(sender);
  if (!recognizer || recognizer->state() != UIGestureRecognizerState::began) return;
  auto path = albumsCollectionView->indexPathForItemAtPoint(recognizer->locationInView(albumsCollectionView.get()));
  if (!path) return;
  bool rightLevel = selectionAtAlbumLevel() ? isAlBumsDisplay : !isAlBumsDisplay;
  if (!rightLevel || isSelectionModeOn()) return;
  enterSelectionMode();
  long row = path->item;
  bool hasSelection = false;
  withLevelList([&](auto& list) {
    auto& item = list.items.at(static_cast<size_t>(row));
    item->isSelected = !item->isSelected;
    hasSelection = !list.selectedItems().empty();
    if (list.didToggleSelection) list.didToggleSelection(hasSelection);
  });
  albumsCollectionView->selectItemAtIndexPath(*path, false, 0);
  setTapInPlace(false, false);
  albumsCollectionView->setAllowsSelection(true);
  albumsCollectionView->setAllowsMultipleSelection(true);
}

template <class AlbumList>
template <class List>
void BrowseScreen<AlbumList>::didToggleSelection(List& list, bool hasSelection, bool albumClosure) {
  closeBtnView->setHidden(!hasSelection);
  selectALLBtn->setHidden(!hasSelection);
  headerSelectionView->setHidden(!hasSelection);
  if (hasSelection) {
    SelectEditView->setHidden(false);
    view()->layoutIfNeeded();
    bool all = list.selectedItems().size() == list.items.size();
    selectALLBtn->setTitle(std::string(all ? "Deselect All" : "Select All"));
    selectAllCehckmark->setSelected(all);
  } else {
    SelectEditView->setHidden(true);
    view()->layoutIfNeeded();
    selectALLBtn->setTitle(std::string("Select All"));
    selectAllCehckmark->setSelected(false);
  }
  list.isMultipleSelectionEnabled = hasSelection;
  if (hasSelection) {
    albumsCollectionView->setTag(1);
  } else {
    albumsCollectionView->setTag(0);
    // Outside selection mode every row counts as selected; the album list's closure sets the
    // item list's flags, so album rows keep theirs false.
    if (albumClosure) {
      photoViewModel->setAllSelected(true);
    } else {
      list.setAllSelected(true);
    }
    selectAllItems(*albumsCollectionView);
  }
  setTapInPlace(!hasSelection, !hasSelection);
}

template <class AlbumList>
void BrowseScreen<AlbumList>::installDidToggleSelectionOnItems() {
  auto weak = weakScreen();
  std::weak_ptr<PhotosViewModel> weakList = photoViewModel;
  photoViewModel->didToggleSelection = [weak, weakList](bool hasSelection) {
    auto self = weak.lock();
    auto list = weakList.lock();
    if (self && list) self->didToggleSelection(*list, hasSelection, false);
  };
  photoViewModel->didToggleSelection(!photoViewModel->selectedItems().empty());
}

template <class AlbumList>
void BrowseScreen<AlbumList>::installDidToggleSelectionOnAlbums() {
  auto weak = weakScreen();
  std::weak_ptr<AlbumList> weakList = viewModel;
  // Where the album flag holds the one list of items, its closure is the items' own.
  bool albumClosure = closureMarksItemList();
  viewModel->didToggleSelection = [weak, weakList, albumClosure](bool hasSelection) {
    auto self = weak.lock();
    auto list = weakList.lock();
    if (self && list) self->didToggleSelection(*list, hasSelection, albumClosure);
  };
  viewModel->didToggleSelection(!viewModel->selectedItems().empty());
}

template <class AlbumList>
void BrowseScreen<AlbumList>::collectionViewDidSelectItemAtIndexPath(UICollectionView&, const NSIndexPath& indexPath) {
  NSLog(isAlBumsDisplay ? "album...select" : "...select");
  withLevelList([&](auto& list) {
    list.items.at(static_cast<size_t>(indexPath.item))->isSelected = true;
    if (list.didToggleSelection) list.didToggleSelection(!list.selectedItems().empty());
  });
}

template <class AlbumList>
void BrowseScreen<AlbumList>::collectionViewDidDeselectItemAtIndexPath(UICollectionView& collectionView,
                                                                      const NSIndexPath& indexPath) {
  NSLog(isAlBumsDisplay ? "d..album...select" : "d...select");
  withLevelList([&](auto& list) {
    list.items.at(static_cast<size_t>(indexPath.item))->isSelected = false;
    if (list.selectedItems().empty()) {
      for (long row = 0; row < static_cast<long>(list.items.size()); ++row) {
        auto cell = std::dynamic_pointer_cast<albumsCollectionViewCell>(collectionView.cellForItemAtIndexPath({0, row}));
        if (cell && cell->checkmarkView) cell->checkmarkView->setHidden(false);
      }
    }
    if (list.didToggleSelection) list.didToggleSelection(!list.selectedItems().empty());
  });
}

template <class AlbumList>
void BrowseScreen<AlbumList>::onSelectAllBtn(Sender) {
  auto weak = weakScreen();
  withLevelList([&](auto& list) {
    using List = std::remove_reference_t<decltype(list)>;
    std::weak_ptr<List> weakList = std::static_pointer_cast<List>(list.shared_from_this());
    list.IsSelectedAll = [weak, weakList](bool allSelected) {
      auto self = weak.lock();
      auto l = weakList.lock();
      if (!self || !l) return;
      l->setAllSelected(!allSelected);
      self->selectALLBtn->setTitle(std::string(allSelected ? "Select All" : "DeSelect All"));
      if (allSelected) {
        self->selectAllCehckmark->setSelected(false);
        deselectAllItems(*self->albumsCollectionView);
      } else {
        self->selectAllCehckmark->setSelected(true);
        selectAllItems(*self->albumsCollectionView);
      }
    };
    list.selectAll();
  });
}

template <class AlbumList>
void BrowseScreen<AlbumList>::leaveSelectionMode() {
  if (!isAlBumsDisplay && imgFav) imgFav->setImage(UIImage::named("ic_unfav"));
  for (const auto& v : {closeBtnView, std::static_pointer_cast<UIView>(selectALLBtn), headerSelectionView, SelectEditView}) {
    v->setHidden(true);
  }
  view()->layoutIfNeeded();
  withLevelList([](auto& list) {
    list.isMultipleSelectionEnabled = false;
  });
  albumsCollectionView->setTag(0);
  withLevelList([](auto& list) { list.setAllSelected(true); });
  selectAllItems(*albumsCollectionView);
  setTapInPlace(true, true);
  selectALLBtn->setTitle(std::string("Select All"));
  selectAllCehckmark->setSelected(false);
}

// ---- Opening and the path bar ----

template <class AlbumList>
void BrowseScreen<AlbumList>::tappingWithLongPressGestureRecognizer(Sender sender) {
  NSLog("fetching");
  auto recognizer = std::dynamic_pointer_cast<UIGestureRecognizer>(sender);
  if (!recognizer) return;
  auto path = albumsCollectionView->indexPathForItemAtPoint(recognizer->locationInView(albumsCollectionView.get()));
  if (!path) return;
  auto weak = weakScreen();
  long row = path->item;
  DispatchQueue::main().async([weak, row] {
    auto self = weak.lock();
    if (!self) return;
    NSLog(std::to_string(row));
    if (self->isAlBumsDisplay) {
      self->openAlbumLevelRow(row);
    } else {
      self->openItemLevelRow(row);
    }
  });
}

template <class AlbumList>
void BrowseScreen<AlbumList>::openAlbumAtRow(long row) {
  currentSelectedAlbumIndex = row;
  isAlBumsDisplay = false;
  AppThemeColor theme;
  lbSubFolderName->setTextColor(theme.AppTheme());
  lbSubFolderName->setHidden(false);
  lastsubImagesAerrowView->setHidden(false);
  lblMainFolderName->setTextColor(UIColor::darkTextColor());
  std::string name = albumNameAtRow(row);
  loadItemsOfAlbum(row);
  lbSubFolderName->setText(name);
  subVFolderNameWidthConstant->setConstant(lbSubFolderName->intrinsicContentSize().width);
  view()->layoutIfNeeded();
}

template <class AlbumList>
void BrowseScreen<AlbumList>::returnToAlbumLevel(bool fromMenu) {
  viewModel->items.clear();
  closeBtnView->setHidden(true);
  selectALLBtn->setHidden(true);
  headerSelectionView->setHidden(true);
  if (fromMenu) viewModel->isMultipleSelectionEnabled = false;
  albumsCollectionView->setTag(0);
  setTapInPlace(true, true);
  selectALLBtn->setTitle(std::string("Select All"));
  selectAllCehckmark->setSelected(false);
  reloadAlbums();
  AppThemeColor theme;
  lblMainFolderName->setTextColor(theme.AppTheme());
  lbSubFolderName->setTextColor(UIColor::darkTextColor());
  lbSubFolderName->setHidden(true);
  lastsubImagesAerrowView->setHidden(true);
  SelectEditView->setHidden(true);
}

template <class AlbumList>
void BrowseScreen<AlbumList>::backToAlbumsKeepingList() {
  isAlBumsDisplay = true;
  closeBtnView->setHidden(true);
  selectALLBtn->setHidden(true);
  headerSelectionView->setHidden(true);
  albumsCollectionView->setTag(0);
  setTapInPlace(true, true);
  selectALLBtn->setTitle(std::string("Select All"));
  selectAllCehckmark->setSelected(false);
  albumsCollectionView->reloadData();
  lblMainFolderName->setTextColor(AppThemeColor().AppTheme());
  lbSubFolderName->setTextColor(UIColor::darkTextColor());
  lbSubFolderName->setHidden(true);
  lastsubImagesAerrowView->setHidden(true);
  SelectEditView->setHidden(true);
  view()->layoutIfNeeded();
}

template <class AlbumList>
void BrowseScreen<AlbumList>::enterSelectionModeOnItemList() {
  photoViewModel->setAllSelected(true);
  selectAllItems(*albumsCollectionView);
  closeBtnView->setHidden(false);
  selectALLBtn->setHidden(false);
  headerSelectionView->setHidden(false);
  photoViewModel->isMultipleSelectionEnabled = true;
  albumsCollectionView->setTag(1);
  photoViewModel->setAllSelected(false);
  deselectAllItems(*albumsCollectionView);
  setTapInPlace(false, false);
  selectALLBtn->setTitle(std::string("Select All"));
  selectAllCehckmark->setSelected(false);
  selectAllCehckmark->setNeedsDisplay();
}

template <class AlbumList>
void BrowseScreen<AlbumList>::onMainFolderBtn(Sender) {
  returnToAlbumLevel(true);
}

template <class AlbumList>
void BrowseScreen<AlbumList>::onBackBtn(Sender) {
  if (auto nav = navigationController()) nav->popViewControllerAnimated(false);
}

// ---- Menu ----

template <class AlbumList>
std::vector<std::string> BrowseScreen<AlbumList>::menuEntries() const {
  if (isAlBumsDisplay) return {"Storage analysis", "Settings"};
  return {"Edit", "Storage analysis", "Settings"};
}

template <class AlbumList>
void BrowseScreen<AlbumList>::menuChose(const std::string& entry) {
  if (entry == "Edit") {
    if (!isSelectionModeOn()) enterSelectionMode();
    return;
  }
  const char* identifier = entry == "Settings" ? "SettingVC" : "StorageAnalysisVC";
  auto controller = UIStoryboard::storyboardWithName("Main").instantiateViewControllerWithIdentifier(identifier);
  if (!controller) {
    fatalError(std::string("Storyboard (<UIStoryboard>) doesn't contain a view controller with identifier '") +
                   identifier + "'",
               "UIStoryboard", 0);
  }
  controller->setModalPresentationStyle(UIModalPresentationStyle::overFullScreen);
  auto weak = weakScreen();
  DispatchQueue::main().asyncAfter(0.5, [weak, controller] {
    if (auto self = weak.lock()) self->presentViewController(controller, true, nullptr);
  });
}

template <class AlbumList>
void BrowseScreen<AlbumList>::onMenuBtn(Sender sender) {
  auto anchor = std::dynamic_pointer_cast<UIView>(sender);
  if (!anchor) anchor = btnMrnu ? std::static_pointer_cast<UIView>(btnMrnu) : view();
  auto entries = menuEntries();
  auto weak = weakScreen();
  showPopupMenu(*this, anchor, entries, false, false, [weak, entries](long index) {
    auto self = weak.lock();
    if (!self || index < 0 || index >= static_cast<long>(entries.size())) return;
    self->menuChose(entries[static_cast<size_t>(index)]);
  });
}

// ---- Bottom edit bar ----

template <class AlbumList>
void BrowseScreen<AlbumList>::onShareBtn(Sender sender) {
  bool sharesHere = selectionAtAlbumLevel() ? isAlBumsDisplay : !isAlBumsDisplay;
  if (!sharesHere) return;
  if (static_cast<size_t>(levelSelectedCount()) > shareLimit()) {
    SVProgressHUD::showInfoWithStatus("Maxium 10 Items Shared...");
    return;
  }
  SVProgressHUD::show();
  auto weak = weakScreen();
  gatherShareItems(sender, [weak, sender](std::vector<UIActivityViewController::Item> items) {
    if (auto self = weak.lock()) self->presentShareSheet(std::move(items), sender);
  });
}

template <class AlbumList>
void BrowseScreen<AlbumList>::presentShareSheet(std::vector<UIActivityViewController::Item> items, Sender sender) {
  auto sheet = std::make_shared<UIActivityViewController>(std::move(items));
  if (UIDevice::currentDevice().userInterfaceIdiom() == UIUserInterfaceIdiom::pad) {
    if (auto popover = sheet->popoverPresentationController()) {
      popover->sourceView = std::dynamic_pointer_cast<UIView>(sender);
    }
  }
  presentViewController(sheet, true, nullptr);
  leaveSelectionMode();
}

template <class AlbumList>
void BrowseScreen<AlbumList>::onDeletBtn(Sender) {
  if (isAlBumsDisplay && !selectionAtAlbumLevel()) {
    deleteFirstSelectedAlbum();
  } else {
    deleteSelectedItems();
  }
  leaveSelectionMode();
}

template <class AlbumList>
void BrowseScreen<AlbumList>::onDeleteBtn(Sender) {
  auto selected = viewModel->selectedItems();
  NSLog(std::to_string(selected.size()));
  if (selected.empty()) fatalError("Index out of range", "Swift/ContiguousArrayBuffer.swift", 600);
}

template <class AlbumList>
void BrowseScreen<AlbumList>::onInfoBtn(Sender) {
  bool here = selectionAtAlbumLevel() ? isAlBumsDisplay : !isAlBumsDisplay;
  if (!here) return;
  showInfoForSelection();
}

template class BrowseScreen<AlbumsViewModel>;
template class BrowseScreen<PhotosViewModel>;

}  // namespace nimbrel
