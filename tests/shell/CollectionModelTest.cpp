#include "shell/CollectionModel.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

#include "platform/uikit/UICollectionView.h"
#include "platform/uikit/UIGestureRecognizer.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UIViewController.h"
#include "shell/QtRunLoop.h"

namespace nimbrel::shell {
namespace {

// A data source of named rows, each cell with one label outlet, and a delegate that counts
// selections; items are 100 × 50 in a flow.
class Rows : public UICollectionViewDataSource, public UICollectionViewDelegate {
 public:
  std::vector<std::string> names;
  std::vector<long> selectedRows;
  long numberOfItems = -1;
  long collectionViewNumberOfItemsInSection(UICollectionView&, long) override {
    return numberOfItems >= 0 ? numberOfItems : static_cast<long>(names.size());
  }
  std::shared_ptr<UICollectionViewCell> collectionViewCellForItemAtIndexPath(UICollectionView& cv,
                                                                             const NSIndexPath& path) override {
    auto cell = cv.dequeueReusableCellWithReuseIdentifier("row", path);
    auto label = std::dynamic_pointer_cast<UILabel>(cell->outlets().front().second);
    label->setText(names.at(static_cast<size_t>(path.item)));
    return cell;
  }
  CGSize collectionViewLayoutSizeForItemAtIndexPath(UICollectionView&, const NSIndexPath&) override {
    return {100, 50};
  }
  void collectionViewDidSelectItemAtIndexPath(UICollectionView&, const NSIndexPath& path) override {
    selectedRows.push_back(path.item);
  }
};

class CollectionModelTest : public ::testing::Test {
 protected:
  CollectionModelTest() {
    collection->registerCellFactory(
        [] {
          auto cell = std::make_shared<UICollectionViewCell>();
          cell->registerOutlet("name", std::make_shared<UILabel>());
          return cell;
        },
        "row");
    collection->setDataSource(rows);
    collection->setDelegate(rows);
    rows->names = {"a", "b", "c", "d", "e"};
    collection->reloadData();
    loop_.settle();
  }
  ~CollectionModelTest() override { RunLoop::install(previous_); }

  QString nameAt(CollectionModel& model, int row) {
    auto outlets = model.data(model.index(row), CollectionModel::OutletsRole).toMap();
    return outlets["name"].toMap()["text"].toString();
  }

  QtRunLoop loop_{0.0};
  RunLoop* previous_ = RunLoop::install(&loop_);
  std::shared_ptr<UICollectionView> collection = std::make_shared<UICollectionView>(CGRectMake(0, 0, 300, 100));
  std::shared_ptr<Rows> rows = std::make_shared<Rows>();
};

TEST_F(CollectionModelTest, RowsAreWhatTheDataSourceFills) {
  CollectionModel model(collection);
  EXPECT_EQ(model.rowCount(), 5);
  EXPECT_EQ(nameAt(model, 0), "a");
  EXPECT_EQ(nameAt(model, 4), "e");  // off the collection's screen: filled for the occasion
  EXPECT_EQ(model.data(model.index(2), CollectionModel::ReuseRole).toString(), "row");
}

TEST_F(CollectionModelTest, TheGridFollowsTheFlowLayout) {
  CollectionModel model(collection);
  EXPECT_EQ(model.columns(), 3);
  EXPECT_DOUBLE_EQ(model.itemWidth(), 100);
  EXPECT_DOUBLE_EQ(model.itemHeight(), 50);
  EXPECT_DOUBLE_EQ(model.contentHeight(), 100);
  collection->setFrame(CGRectMake(0, 0, 200, 100));
  loop_.settle();
  EXPECT_EQ(model.columns(), 2);
  EXPECT_DOUBLE_EQ(model.contentHeight(), 150);
}

TEST_F(CollectionModelTest, AChangeInALiveCellReachesItsRowOnly) {
  CollectionModel model(collection);
  ASSERT_EQ(nameAt(model, 1), "b");
  QSignalSpy spy(&model, &QAbstractItemModel::dataChanged);
  auto cell = collection->cellForItemAtIndexPath({0, 1});
  ASSERT_TRUE(cell);
  std::dynamic_pointer_cast<UILabel>(cell->outlets().front().second)->setText(std::string("B!"));
  loop_.settle();
  ASSERT_EQ(spy.count(), 1);
  EXPECT_EQ(spy.first()[0].value<QModelIndex>().row(), 1);
  EXPECT_EQ(spy.first()[1].value<QModelIndex>().row(), 1);
  EXPECT_EQ(nameAt(model, 1), "B!");
}

TEST_F(CollectionModelTest, AReloadKeepsRowsAndAddsOrRemovesOnlyTheDifference) {
  CollectionModel model(collection);
  QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
  QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
  QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
  rows->names = {"x", "y", "z", "w", "v", "u", "t"};
  collection->reloadData();
  loop_.settle();
  EXPECT_EQ(model.rowCount(), 7);
  EXPECT_EQ(inserted.count(), 1);
  EXPECT_EQ(reset.count(), 0);
  EXPECT_EQ(nameAt(model, 0), "x");
  rows->names = {"p"};
  collection->reloadData();
  loop_.settle();
  EXPECT_EQ(model.rowCount(), 1);
  EXPECT_EQ(removed.count(), 1);
  EXPECT_EQ(nameAt(model, 0), "p");
}

TEST_F(CollectionModelTest, ATapSelectsThroughTheCollectionOrGoesToAnAttachedRecogniserAtTheCellsCentre) {
  CollectionModel plain(collection);
  EXPECT_TRUE(plain.tap(3));
  EXPECT_EQ(rows->selectedRows, std::vector<long>{3});
  EXPECT_FALSE(plain.tap(9));  // no such row
  rows->selectedRows.clear();

  auto controller = std::make_shared<UIViewController>();
  CGPoint at{-1, -1};
  std::shared_ptr<UITapGestureRecognizer> tap;
  controller->registerAction("tapped:", [&](const std::shared_ptr<NSObject>& sender) {
    at = std::dynamic_pointer_cast<UIGestureRecognizer>(sender)->locationInView(collection.get());
  });
  tap = std::make_shared<UITapGestureRecognizer>(controller, "tapped:");
  collection->addGestureRecognizer(tap);
  CollectionModel model(collection);
  EXPECT_TRUE(model.tap(4));
  EXPECT_EQ(at, (CGPoint{150, 75}));  // row 4 is the second cell of the second row
  EXPECT_TRUE(rows->selectedRows.empty());
  EXPECT_FALSE(model.longPress(0));   // no long-press recogniser in place
}

}  // namespace
}  // namespace nimbrel::shell
