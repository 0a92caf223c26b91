#pragma once

#include <QAbstractListModel>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

#include <map>
#include <memory>
#include <set>
#include <vector>

#include "platform/foundation/ChangeSignal.h"

class UICollectionView;
class UICollectionViewCell;

namespace nimbrel::shell {

// The rows of one collection view as its data source fills them. A row on screen is read from the
// collection's live cell and follows it (thumbnails arriving, checkmarks, selection); a row the
// collection does not show is read once through `withCellForRow`. Rows are told apart by their
// layout ("reuse") so that a delegate can pick its cell component.
class CollectionModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("made by a collection's outlet")
  Q_PROPERTY(int count READ count NOTIFY layoutChanged2)
  Q_PROPERTY(double itemWidth READ itemWidth NOTIFY layoutChanged2)
  Q_PROPERTY(double itemHeight READ itemHeight NOTIFY layoutChanged2)
  Q_PROPERTY(int columns READ columns NOTIFY layoutChanged2)
  Q_PROPERTY(double contentHeight READ contentHeight NOTIFY layoutChanged2)
  Q_PROPERTY(int reloads READ reloads NOTIFY layoutChanged2)

 public:
  enum Role { ReuseRole = Qt::UserRole + 1, SelectedRole, OutletsRole, RowRole };

  CollectionModel(std::shared_ptr<UICollectionView> collection, QObject* parent = nullptr);
  ~CollectionModel() override;

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

  int count() const { return count_; }
  double itemWidth() const { return itemWidth_; }
  double itemHeight() const { return itemHeight_; }
  int columns() const { return columns_; }
  double contentHeight() const { return contentHeight_; }
  int reloads() const { return reloads_; }

  // A person's touch on a row (-1: the gap), through the same path the automation protocol uses.
  Q_INVOKABLE bool tap(int row);
  Q_INVOKABLE bool longPress(int row);
  // What a drag from a row carries out of the program (see DragOut.h); empty: no drag.
  Q_INVOKABLE QVariantMap dragData(int row) const;
  // Whether a drag may start from a row, asked at every press: the files are looked for later.
  Q_INVOKABLE bool draggable(int row) const;

  // Reads the collection again now (the shell normally does this one turn after a change).
  void refreshNow();

 Q_SIGNALS:
  void layoutChanged2();

 private:
  struct Row {
    bool valid = false;
    const UICollectionViewCell* cell = nullptr;  // the live cell it was read from, if any
    QString reuse;
    bool selected = false;
    QVariantMap outlets;
  };
  struct Watch {
    std::vector<std::pair<ChangeSignal*, ChangeSignal::Token>> tokens;
    std::shared_ptr<UICollectionViewCell> cell;  // kept alive while watched
  };

  void scheduleRefresh();
  void read(int row, Row& into) const;
  void watchVisible(const std::map<long, std::shared_ptr<UICollectionViewCell>>& visible);
  void unwatch(Watch& watch);
  void cellChanged(const UICollectionViewCell* cell);
  void flushDirty();

  std::shared_ptr<UICollectionView> collection_;
  ChangeSignal::Token token_ = 0;
  mutable std::vector<Row> rows_;
  int count_ = 0;
  int reloads_ = -1;
  double itemWidth_ = 0, itemHeight_ = 0, contentHeight_ = 0;
  int columns_ = 1;
  bool refreshScheduled_ = false;
  bool flushScheduled_ = false;
  std::map<const UICollectionViewCell*, Watch> watched_;
  std::map<const UICollectionViewCell*, long> rowOfCell_;
  std::set<int> dirty_;
};

}  // namespace nimbrel::shell
