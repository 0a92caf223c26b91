#pragma once

#include <functional>
#include <map>
#include <optional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "platform/uikit/NSIndexPath.h"
#include "platform/uikit/UICollectionViewCell.h"
#include "platform/uikit/UINib.h"
#include "platform/uikit/UIScrollView.h"

class UICollectionView;

class UICollectionViewDataSource {
 public:
  virtual ~UICollectionViewDataSource() = default;
  virtual long numberOfSectionsInCollectionView(UICollectionView& collectionView) { return 1; }
  virtual long collectionViewNumberOfItemsInSection(UICollectionView& collectionView, long section) = 0;
  virtual std::shared_ptr<UICollectionViewCell> collectionViewCellForItemAtIndexPath(
      UICollectionView& collectionView, const NSIndexPath& indexPath) = 0;
};

// The delegate, with the flow layout's size question.
class UICollectionViewDelegate : public UIScrollViewDelegate {
 public:
  virtual void collectionViewDidSelectItemAtIndexPath(UICollectionView& collectionView, const NSIndexPath& indexPath) {}
  virtual void collectionViewDidDeselectItemAtIndexPath(UICollectionView& collectionView, const NSIndexPath& indexPath) {}
  virtual CGSize collectionViewLayoutSizeForItemAtIndexPath(UICollectionView& collectionView,
                                                            const NSIndexPath& indexPath) {
    return {50, 50};
  }
};

class UICollectionViewDataSourcePrefetching {
 public:
  virtual ~UICollectionViewDataSourcePrefetching() = default;
  virtual void collectionViewPrefetchItemsAtIndexPaths(UICollectionView& collectionView,
                                                       const std::vector<NSIndexPath>& indexPaths) {}
  virtual void collectionViewCancelPrefetchingForItemsAtIndexPaths(UICollectionView& collectionView,
                                                                   const std::vector<NSIndexPath>& indexPaths) {}
};

// A collection laid out as a flow (rows filled left to right, no spacing), with cells made from
// registered layouts and reused. Programmatic selection never calls the delegate; a user's tap
// (`userTapItemAtIndexPath`) does, when selection is allowed.
class UICollectionView : public UIScrollView {
 public:
  using UIScrollView::UIScrollView;
  using CellFactory = std::function<std::shared_ptr<UICollectionViewCell>()>;
  const char* className() const override { return "UICollectionView"; }

  void setDataSource(std::weak_ptr<UICollectionViewDataSource> d) { dataSource_ = std::move(d); }
  void setDelegate(std::weak_ptr<UICollectionViewDelegate> d);
  void setPrefetchDataSource(std::weak_ptr<UICollectionViewDataSourcePrefetching> d) { prefetch_ = std::move(d); }
  std::shared_ptr<UICollectionViewDataSource> dataSource() const { return dataSource_.lock(); }
  std::shared_ptr<UICollectionViewDelegate> collectionDelegate() const { return delegate_.lock(); }
  std::shared_ptr<UICollectionViewDataSourcePrefetching> prefetchDataSource() const { return prefetch_.lock(); }

  void registerNibForCellWithReuseIdentifier(const std::shared_ptr<UINib>& nib, const std::string& identifier);
  void registerCellFactory(CellFactory factory, const std::string& identifier);
  bool hasRegistration(const std::string& identifier) const { return factories_.count(identifier) > 0; }
  // A reused or new cell of that layout; an identifier never registered ends the process.
  std::shared_ptr<UICollectionViewCell> dequeueReusableCellWithReuseIdentifier(const std::string& identifier,
                                                                               const NSIndexPath& indexPath);

  void reloadData();
  int reloadCount() const { return reloadCount_; }
  long numberOfSections();
  long numberOfItemsInSection(long section);

  // Selection, without delegate calls.
  void selectItemAtIndexPath(const NSIndexPath& indexPath, bool animated, int scrollPosition = 0);
  void deselectItemAtIndexPath(const NSIndexPath& indexPath, bool animated);
  std::vector<NSIndexPath> indexPathsForSelectedItems() const;
  bool isSelected(const NSIndexPath& indexPath) const { return selected_.count(indexPath) > 0; }
  bool allowsSelection() const { return allowsSelection_; }
  void setAllowsSelection(bool v) { allowsSelection_ = v; }
  bool allowsMultipleSelection() const { return allowsMultipleSelection_; }
  void setAllowsMultipleSelection(bool v) { allowsMultipleSelection_ = v; }

  // The cell on screen at the position, if any.
  std::shared_ptr<UICollectionViewCell> cellForItemAtIndexPath(const NSIndexPath& indexPath);
  std::vector<std::shared_ptr<UICollectionViewCell>> visibleCells();
  std::vector<NSIndexPath> indexPathsForVisibleItems();
  // The item whose frame holds the point (content coordinates); none for the gaps.
  std::optional<NSIndexPath> indexPathForItemAtPoint(CGPoint point);
  CGRect frameForItemAtIndexPath(const NSIndexPath& indexPath);
  CGPoint centerOfItemAtIndexPath(const NSIndexPath& indexPath);

  // Lays the cells out for the current bounds and offset, asking the data source for the cells
  // that come on screen.
  void layoutSubviews();
  // A user taps an item: the collection's own selection handling.
  void userTapItemAtIndexPath(const NSIndexPath& indexPath);

  // The cell of a row as its data source fills it now: the one on screen, or one made for the
  // occasion and handed back to the reuse pool afterwards.
  void withCellForRow(const NSIndexPath& indexPath, const std::function<void(UICollectionViewCell&)>& use);

  void contentOffsetDidChange() override;
  void frameDidChange() override;

 private:
  void computeLayout();
  void applySelection(UICollectionViewCell& cell, const NSIndexPath& indexPath);

  std::weak_ptr<UICollectionViewDataSource> dataSource_;
  std::weak_ptr<UICollectionViewDelegate> delegate_;
  std::weak_ptr<UICollectionViewDataSourcePrefetching> prefetch_;
  std::map<std::string, CellFactory> factories_;
  std::map<std::string, std::vector<std::shared_ptr<UICollectionViewCell>>> pool_;
  std::map<NSIndexPath, std::shared_ptr<UICollectionViewCell>> visible_;
  std::set<NSIndexPath> selected_;
  std::vector<std::vector<CGRect>> frames_;  // per section
  std::set<NSIndexPath> prefetched_;
  bool layoutScheduled_ = false;
  bool layoutValid_ = false;
  bool allowsSelection_ = true;
  bool allowsMultipleSelection_ = false;
  int reloadCount_ = 0;
};
