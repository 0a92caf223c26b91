#include "platform/uikit/UICollectionView.h"

#include <algorithm>

#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FatalError.h"

namespace {
// Widths like W/3 add up to a hair more than W in floating point.
constexpr double kRowTolerance = 0.5;
}  // namespace

void UICollectionView::setDelegate(std::weak_ptr<UICollectionViewDelegate> d) {
  delegate_ = d;
  UIScrollView::setDelegate(std::weak_ptr<UIScrollViewDelegate>(d.lock()));
}

void UICollectionView::registerNibForCellWithReuseIdentifier(const std::shared_ptr<UINib>& nib,
                                                             const std::string& identifier) {
  if (!nib) return;
  factories_[identifier] = [nib]() -> std::shared_ptr<UICollectionViewCell> {
    for (const auto& object : nib->instantiateWithOwner(nullptr)) {
      if (auto cell = std::dynamic_pointer_cast<UICollectionViewCell>(object)) {
        cell->awakeFromNib();
        return cell;
      }
    }
    return nullptr;
  };
}

void UICollectionView::registerCellFactory(CellFactory factory, const std::string& identifier) {
  factories_[identifier] = std::move(factory);
}

std::shared_ptr<UICollectionViewCell> UICollectionView::dequeueReusableCellWithReuseIdentifier(
    const std::string& identifier, const NSIndexPath&) {
  auto& pool = pool_[identifier];
  if (!pool.empty()) {
    auto cell = std::move(pool.back());
    pool.pop_back();
    cell->prepareForReuse();
    return cell;
  }
  auto factory = factories_.find(identifier);
  std::shared_ptr<UICollectionViewCell> cell = factory == factories_.end() ? nullptr : factory->second();
  if (!cell) {
    fatalError("could not dequeue a view of kind: UICollectionElementKindCell with identifier " + identifier +
                   " - must register a nib or a class for the identifier or connect a prototype cell in a "
                   "storyboard",
               "UICollectionView", 0);
  }
  cell->setReuseIdentifier(identifier);
  return cell;
}

long UICollectionView::numberOfSections() {
  auto source = dataSource_.lock();
  return source ? source->numberOfSectionsInCollectionView(*this) : 0;
}

long UICollectionView::numberOfItemsInSection(long section) {
  auto source = dataSource_.lock();
  return source ? source->collectionViewNumberOfItemsInSection(*this, section) : 0;
}

void UICollectionView::reloadData() {
  ++reloadCount_;
  layoutValid_ = false;
  for (auto& [path, cell] : visible_) {
    cell->removeFromSuperview();
    pool_[cell->reuseIdentifier()].push_back(cell);
  }
  visible_.clear();
  prefetched_.clear();
  didChange();
  if (layoutScheduled_ || !RunLoop::hasCurrent()) return;
  layoutScheduled_ = true;
  std::weak_ptr<UICollectionView> weak = strongSelf<UICollectionView>();
  DispatchQueue::main().async([weak] {
    if (auto self = weak.lock()) {
      self->layoutScheduled_ = false;
      self->layoutSubviews();
    }
  });
}

void UICollectionView::computeLayout() {
  frames_.clear();
  auto delegate = delegate_.lock();
  double width = bounds().width();
  double x = 0, y = 0, rowHeight = 0;
  long sections = numberOfSections();
  for (long s = 0; s < sections; ++s) {
    std::vector<CGRect> frames;
    long items = numberOfItemsInSection(s);
    frames.reserve(static_cast<size_t>(std::max(0L, items)));
    for (long i = 0; i < items; ++i) {
      CGSize size = delegate ? delegate->collectionViewLayoutSizeForItemAtIndexPath(*this, {s, i}) : CGSize{50, 50};
      if (x > 0 && x + size.width > width + kRowTolerance) {
        y += rowHeight;
        x = 0;
        rowHeight = 0;
      }
      frames.push_back(CGRect{{x, y}, size});
      x += size.width;
      rowHeight = std::max(rowHeight, size.height);
    }
    frames_.push_back(std::move(frames));
  }
  setContentSize({width, y + rowHeight});
  // Selections beyond the new contents fall away.
  std::erase_if(selected_, [&](const NSIndexPath& p) {
    return p.section >= static_cast<long>(frames_.size()) || p.item >= static_cast<long>(frames_[p.section].size());
  });
  layoutValid_ = true;
}

CGRect UICollectionView::frameForItemAtIndexPath(const NSIndexPath& indexPath) {
  if (!layoutValid_) computeLayout();
  if (indexPath.section < 0 || indexPath.section >= static_cast<long>(frames_.size())) return {};
  const auto& frames = frames_[indexPath.section];
  if (indexPath.item < 0 || indexPath.item >= static_cast<long>(frames.size())) return {};
  return frames[indexPath.item];
}

CGPoint UICollectionView::centerOfItemAtIndexPath(const NSIndexPath& indexPath) {
  CGRect f = frameForItemAtIndexPath(indexPath);
  return {f.minX() + f.width() / 2, f.minY() + f.height() / 2};
}

std::optional<NSIndexPath> UICollectionView::indexPathForItemAtPoint(CGPoint point) {
  if (!layoutValid_) computeLayout();
  for (size_t s = 0; s < frames_.size(); ++s) {
    const auto& frames = frames_[s];
    // Rows grow downwards: find the first frame that ends below the point, then scan its row.
    auto it = std::partition_point(frames.begin(), frames.end(), [&](const CGRect& f) { return f.maxY() <= point.y; });
    for (; it != frames.end() && it->minY() <= point.y; ++it) {
      if (it->contains(point)) return NSIndexPath{static_cast<long>(s), static_cast<long>(it - frames.begin())};
    }
  }
  return std::nullopt;
}

void UICollectionView::applySelection(UICollectionViewCell& cell, const NSIndexPath& indexPath) {
  bool want = selected_.count(indexPath) > 0;
  if (cell.isSelected() != want) cell.setSelected(want);
}

void UICollectionView::layoutSubviews() {
  if (!layoutValid_) computeLayout();
  auto source = dataSource_.lock();
  double top = contentOffset().y;
  double bottom = top + bounds().height();
  std::set<NSIndexPath> onScreen;
  std::vector<NSIndexPath> nearby;
  for (size_t s = 0; s < frames_.size(); ++s) {
    const auto& frames = frames_[s];
    auto it = std::partition_point(frames.begin(), frames.end(), [&](const CGRect& f) { return f.maxY() <= top; });
    for (; it != frames.end() && it->minY() < bottom + bounds().height(); ++it) {
      NSIndexPath path{static_cast<long>(s), static_cast<long>(it - frames.begin())};
      if (it->minY() < bottom) {
        onScreen.insert(path);
      } else if (!prefetched_.count(path)) {
        nearby.push_back(path);
      }
    }
  }
  for (auto it = visible_.begin(); it != visible_.end();) {
    if (onScreen.count(it->first)) {
      ++it;
      continue;
    }
    it->second->removeFromSuperview();
    pool_[it->second->reuseIdentifier()].push_back(it->second);
    it = visible_.erase(it);
  }
  if (source) {
    for (const auto& path : onScreen) {
      if (visible_.count(path)) continue;
      auto cell = source->collectionViewCellForItemAtIndexPath(*this, path);
      if (!cell) continue;
      cell->setFrame(frameForItemAtIndexPath(path));
      addSubview(cell);
      visible_[path] = cell;
      applySelection(*cell, path);
    }
  }
  if (!nearby.empty()) {
    prefetched_.insert(nearby.begin(), nearby.end());
    if (auto prefetch = prefetch_.lock()) prefetch->collectionViewPrefetchItemsAtIndexPaths(*this, nearby);
  }
}

std::shared_ptr<UICollectionViewCell> UICollectionView::cellForItemAtIndexPath(const NSIndexPath& indexPath) {
  auto it = visible_.find(indexPath);
  return it == visible_.end() ? nullptr : it->second;
}

std::vector<std::shared_ptr<UICollectionViewCell>> UICollectionView::visibleCells() {
  std::vector<std::shared_ptr<UICollectionViewCell>> out;
  for (const auto& [path, cell] : visible_) out.push_back(cell);
  return out;
}

std::vector<NSIndexPath> UICollectionView::indexPathsForVisibleItems() {
  std::vector<NSIndexPath> out;
  for (const auto& [path, cell] : visible_) out.push_back(path);
  return out;
}

void UICollectionView::selectItemAtIndexPath(const NSIndexPath& indexPath, bool, int) {
  if (!allowsSelection_) return;
  if (!allowsMultipleSelection_) {
    for (const auto& p : std::vector<NSIndexPath>(selected_.begin(), selected_.end())) {
      if (!(p == indexPath)) deselectItemAtIndexPath(p, false);
    }
  }
  selected_.insert(indexPath);
  if (auto cell = cellForItemAtIndexPath(indexPath)) applySelection(*cell, indexPath);
}

void UICollectionView::deselectItemAtIndexPath(const NSIndexPath& indexPath, bool) {
  selected_.erase(indexPath);
  if (auto cell = cellForItemAtIndexPath(indexPath)) applySelection(*cell, indexPath);
}

std::vector<NSIndexPath> UICollectionView::indexPathsForSelectedItems() const {
  return {selected_.begin(), selected_.end()};
}

void UICollectionView::userTapItemAtIndexPath(const NSIndexPath& indexPath) {
  if (!allowsSelection_) return;
  auto delegate = delegate_.lock();
  if (selected_.count(indexPath)) {
    if (!allowsMultipleSelection_) return;
    deselectItemAtIndexPath(indexPath, true);
    if (delegate) delegate->collectionViewDidDeselectItemAtIndexPath(*this, indexPath);
    return;
  }
  if (!allowsMultipleSelection_) {
    for (const auto& p : std::vector<NSIndexPath>(selected_.begin(), selected_.end())) {
      deselectItemAtIndexPath(p, true);
      if (delegate) delegate->collectionViewDidDeselectItemAtIndexPath(*this, p);
    }
  }
  selectItemAtIndexPath(indexPath, true);
  if (delegate) delegate->collectionViewDidSelectItemAtIndexPath(*this, indexPath);
}

void UICollectionView::withCellForRow(const NSIndexPath& indexPath,
                                      const std::function<void(UICollectionViewCell&)>& use) {
  if (auto cell = cellForItemAtIndexPath(indexPath)) {
    use(*cell);
    return;
  }
  auto source = dataSource_.lock();
  if (!source) return;
  auto cell = source->collectionViewCellForItemAtIndexPath(*this, indexPath);
  if (!cell) return;
  applySelection(*cell, indexPath);
  use(*cell);
  pool_[cell->reuseIdentifier()].push_back(cell);
}

void UICollectionView::contentOffsetDidChange() {
  if (layoutValid_) layoutSubviews();
}

void UICollectionView::frameDidChange() {
  layoutValid_ = false;
  if (RunLoop::hasCurrent() && !layoutScheduled_) {
    layoutScheduled_ = true;
    std::weak_ptr<UICollectionView> weak = strongSelf<UICollectionView>();
    DispatchQueue::main().async([weak] {
      if (auto self = weak.lock()) {
        self->layoutScheduled_ = false;
        self->layoutSubviews();
      }
    });
  }
}
