#include "shell/CollectionModel.h"

#include <QTimer>

#include <cmath>

#include "automation/CollectionTouch.h"
#include "platform/uikit/UICollectionView.h"
#include "shell/DragOut.h"
#include "shell/Snapshot.h"

namespace nimbrel::shell {

CollectionModel::CollectionModel(std::shared_ptr<UICollectionView> collection, QObject* parent)
    : QAbstractListModel(parent), collection_(std::move(collection)) {
  token_ = collection_->changed().observe([this] { scheduleRefresh(); });
  refreshNow();
}

CollectionModel::~CollectionModel() {
  collection_->changed().unobserve(token_);
  for (auto& [cell, watch] : watched_) unwatch(watch);
}

int CollectionModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : count_;
}

QHash<int, QByteArray> CollectionModel::roleNames() const {
  return {{ReuseRole, "reuse"}, {SelectedRole, "selected"}, {OutletsRole, "outlets"}, {RowRole, "row"}};
}

void CollectionModel::read(int row, Row& into) const {
  into = Row{};
  into.valid = true;
  auto fill = [&](UICollectionViewCell& cell) {
    into.reuse = QString::fromStdString(cell.reuseIdentifier());
    into.selected = cell.isSelected();
    for (const auto& [name, view] : cell.outlets()) into.outlets.insert(QString::fromStdString(name), snapshotOf(view));
  };
  NSIndexPath path{0, row};
  if (auto live = collection_->cellForItemAtIndexPath(path)) {
    into.cell = live.get();
    fill(*live);
    return;
  }
  collection_->withCellForRow(path, fill);
}

QVariant CollectionModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() < 0 || index.row() >= count_) return {};
  Row& row = rows_[static_cast<size_t>(index.row())];
  if (!row.valid) read(index.row(), row);
  switch (role) {
    case ReuseRole: return row.reuse;
    case SelectedRole: return row.selected;
    case OutletsRole: return row.outlets;
    case RowRole: return index.row();
    default: return {};
  }
}

void CollectionModel::scheduleRefresh() {
  if (refreshScheduled_) return;
  refreshScheduled_ = true;
  QTimer::singleShot(0, this, [this] {
    refreshScheduled_ = false;
    refreshNow();
  });
}

void CollectionModel::refreshNow() {
  long sections = collection_->numberOfSections();
  int count = sections > 0 ? static_cast<int>(collection_->numberOfItemsInSection(0)) : 0;
  bool reloaded = collection_->reloadCount() != reloads_;
  reloads_ = collection_->reloadCount();

  if (count != count_) {
    if (count > count_) {
      beginInsertRows({}, count_, count - 1);
      rows_.resize(static_cast<size_t>(count));
      count_ = count;
      endInsertRows();
    } else {
      beginRemoveRows({}, count, count_ - 1);
      rows_.resize(static_cast<size_t>(count));
      count_ = count;
      endRemoveRows();
    }
  }

  // Geometry from the collection's own flow layout.
  double itemWidth = 0, itemHeight = 0;
  int columns = 1;
  if (count_ > 0) {
    CGRect first = collection_->frameForItemAtIndexPath({0, 0});
    itemWidth = first.width();
    itemHeight = first.height();
    columns = 0;
    for (long i = 0; i < count_ && i < 64; ++i) {
      if (collection_->frameForItemAtIndexPath({0, i}).minY() != first.minY()) break;
      ++columns;
    }
    columns = std::max(columns, 1);
  }
  double contentHeight = collection_->contentSize().height;
  bool geometry = itemWidth != itemWidth_ || itemHeight != itemHeight_ || columns != columns_ ||
                  contentHeight != contentHeight_;
  itemWidth_ = itemWidth;
  itemHeight_ = itemHeight;
  columns_ = columns;
  contentHeight_ = contentHeight;

  std::map<long, std::shared_ptr<UICollectionViewCell>> visible;
  for (const auto& path : collection_->indexPathsForVisibleItems()) {
    if (path.section == 0 && path.item < count_) visible[path.item] = collection_->cellForItemAtIndexPath(path);
  }
  watchVisible(visible);

  if (reloaded) {
    // Same rows, new contents: delegates stay, their bindings read again.
    for (auto& row : rows_) row.valid = false;
    if (count_ > 0) Q_EMIT dataChanged(index(0), index(count_ - 1));
  } else {
    // Rows whose live cell changed (came on screen, or went and came back as another cell).
    for (int r = 0; r < count_; ++r) {
      Row& row = rows_[static_cast<size_t>(r)];
      if (!row.valid) continue;
      auto it = visible.find(r);
      const UICollectionViewCell* now = it == visible.end() ? nullptr : it->second.get();
      if (now != row.cell) dirty_.insert(r);
    }
    flushDirty();
  }
  if (geometry || reloaded) Q_EMIT layoutChanged2();
}

void CollectionModel::unwatch(Watch& watch) {
  for (auto& [signal, token] : watch.tokens) signal->unobserve(token);
  watch.tokens.clear();
}

void CollectionModel::watchVisible(const std::map<long, std::shared_ptr<UICollectionViewCell>>& visible) {
  std::set<const UICollectionViewCell*> keep;
  rowOfCell_.clear();
  for (const auto& [row, cell] : visible) {
    keep.insert(cell.get());
    rowOfCell_[cell.get()] = row;
    if (watched_.count(cell.get())) continue;
    Watch watch;
    watch.cell = cell;
    const UICollectionViewCell* key = cell.get();
    watch.tokens.emplace_back(&cell->changed(), cell->changed().observe([this, key] { cellChanged(key); }));
    for (const auto& [name, view] : cell->outlets()) {
      if (!view) continue;
      watch.tokens.emplace_back(&view->changed(), view->changed().observe([this, key] { cellChanged(key); }));
    }
    watched_.emplace(key, std::move(watch));
  }
  for (auto it = watched_.begin(); it != watched_.end();) {
    if (keep.count(it->first)) {
      ++it;
      continue;
    }
    unwatch(it->second);
    it = watched_.erase(it);
  }
}

void CollectionModel::cellChanged(const UICollectionViewCell* cell) {
  auto it = rowOfCell_.find(cell);
  if (it == rowOfCell_.end() || it->second >= count_) return;
  dirty_.insert(static_cast<int>(it->second));
  if (flushScheduled_) return;
  flushScheduled_ = true;
  QTimer::singleShot(0, this, [this] {
    flushScheduled_ = false;
    flushDirty();
  });
}

void CollectionModel::flushDirty() {
  auto dirty = std::move(dirty_);
  dirty_.clear();
  for (int r : dirty) {
    if (r >= count_) continue;
    Row& row = rows_[static_cast<size_t>(r)];
    if (!collection_->cellForItemAtIndexPath({0, r})) {
      // Off the collection's screen: read again only if a delegate still asks.
      row.valid = false;
      row.cell = nullptr;
      Q_EMIT dataChanged(index(r), index(r));
      continue;
    }
    Row next;
    read(r, next);
    if (row.valid && next.reuse == row.reuse && next.selected == row.selected && next.outlets == row.outlets) {
      row.cell = next.cell;
      continue;
    }
    row = std::move(next);
    Q_EMIT dataChanged(index(r), index(r));
  }
}

bool CollectionModel::tap(int row) {
  auto why = touchCollection(*collection_, row < 0 ? std::nullopt : std::optional<long>(row), false);
  return !why;
}

bool CollectionModel::longPress(int row) {
  auto why = touchCollection(*collection_, row < 0 ? std::nullopt : std::optional<long>(row), true);
  return !why;
}

bool CollectionModel::draggable(int row) const {
  return row >= 0 && row < count_ && mayDrag(*collection_, row);
}

QVariantMap CollectionModel::dragData(int row) const {
  return row < 0 || row >= count_ ? QVariantMap() : dragMimeData(*collection_, row);
}

}  // namespace nimbrel::shell
