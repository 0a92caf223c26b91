#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/SimTest.h"
#include "app/ads/AppLovinNativeAdManual.h"
#include "app/media/AlbumModel.h"
#include "app/media/AlbumsViewModel.h"
#include "app/media/PhotoModel.h"
#include "app/media/PhotosViewModel.h"
#include "backends/sim/Iso8601.h"
#include "platform/photos/PHAssetCollection.h"

namespace nimbrel {
namespace {

constexpr const char* kLibrary = R"({"now": "2026-06-01T12:00:00Z", "photos": {
  "assets": [
    {"id": "IMG/L0/001", "mediaType": 1, "created": "2026-03-01T09:30:00Z"},
    {"id": "VID/L0/001", "mediaType": 2, "created": "2026-03-02T09:30:00Z"},
    {"id": "AUD/L0/001", "mediaType": 3, "created": "2026-03-03T09:30:00Z"},
    {"id": "UNK/L0/001", "mediaType": 0, "created": "2026-03-04T09:30:00Z"},
    {"id": "NODATE/L0/001", "mediaType": 2, "created": null}
  ],
  "albums": [
    {"id": "TRIP/L0/040", "title": "Trip", "type": 1, "subtype": 2,
     "assets": ["IMG/L0/001", "VID/L0/001", "AUD/L0/001"]},
    {"id": "UNTITLED/L0/040", "type": 1, "subtype": 2, "assets": ["IMG/L0/001"]}
  ]}})";

class BrowseModelsTest : public testing::SimTest {
 protected:
  void SetUp() override { start(kLibrary); }

  PHFetchResult<PHAsset> newestFirst(const PHAssetCollection& collection) {
    PHFetchOptions options;
    options.sortDescriptors = {{"creationDate", false}};
    return PHAsset::fetchAssetsInAssetCollection(collection, &options);
  }
  static double at(const char* iso) { return *sim::parseIso8601(iso); }
};

TEST_F(BrowseModelsTest, AnAssetRowTakesTheAssetsIdentityDateAndKind) {
  const std::tuple<const char*, FileType, double> rows[] = {
      {"IMG/L0/001", FileType::photo, at("2026-03-01T09:30:00Z")},
      {"VID/L0/001", FileType::video, at("2026-03-02T09:30:00Z")},
      {"AUD/L0/001", FileType::photo, at("2026-03-03T09:30:00Z")},
      {"UNK/L0/001", FileType::photo, at("2026-03-04T09:30:00Z")},
      {"NODATE/L0/001", FileType::video, at("2026-06-01T12:01:30Z")},  // made now
  };
  advance(90);
  for (auto [id, kind, created] : rows) {
    SCOPED_TRACE(id);
    auto model = PhotoModel::fromAsset(asset(id));
    EXPECT_EQ(model.identifier, id);
    EXPECT_EQ(model.fileType, kind);
    EXPECT_EQ(model.creationDate.timeIntervalSinceReferenceDate, created);
    EXPECT_EQ(model.name + model.albumId + model.albumName, "");
  }
}

TEST_F(BrowseModelsTest, AnAlbumRowIsMadeOnlyForAnAlbumWithSomethingInIt) {
  auto trip = album("TRIP/L0/040");
  auto result = newestFirst(*trip);
  auto row = AlbumModel::fromAlbum(trip, static_cast<long>(result.count()), result);
  ASSERT_TRUE(row);
  EXPECT_EQ(row->name, "Trip");
  EXPECT_EQ(row->identifier, "TRIP/L0/040");
  EXPECT_EQ(row->albumAsset->localIdentifier(), "AUD/L0/001") << "the cover is the newest";

  auto untitled = album("UNTITLED/L0/040");
  auto one = AlbumModel::fromAlbum(untitled, 1, newestFirst(*untitled));
  ASSERT_TRUE(one);
  EXPECT_EQ(one->name, "") << "an album without a title";

  EXPECT_FALSE(AlbumModel::fromAlbum(trip, 0, result));
  EXPECT_FALSE(AlbumModel::fromAlbum(trip, -1, result));
}

// The two browse lists behave alike; each case runs on both.
template <class Model>
class BrowseListTest : public testing::SimTest {
 protected:
  void SetUp() override { start(); }

  static std::shared_ptr<Model> list(size_t n) {
    std::vector<std::remove_cvref_t<decltype(Model().items[0]->item)>> records(n);
    for (size_t i = 0; i < n; ++i) records[i].identifier = "row" + std::to_string(i);
    return Model::withModels(std::move(records));
  }
  template <class Rows>
  static std::vector<std::string> ids(const Rows& rows) {
    std::vector<std::string> out;
    for (const auto& r : rows) out.push_back(r->item.identifier);
    return out;
  }
  static void loadNativeAd() {
    AppLovinNativeAdManual::shared()->arrNativeAd.push_back(MAAd{MAAdFormat::native, "native-unit", "AppLovin", "", "", ""});
  }
  // What the screens do when told whether everything is picked: pick all when not, clear all when so.
  static void likeTheScreens(const std::shared_ptr<Model>& model, std::vector<bool>& told) {
    model->IsSelectedAll = [weak = std::weak_ptr<Model>(model), &told](bool allSelected) {
      told.push_back(allSelected);
      weak.lock()->setAllSelected(!allSelected);
    };
  }
};

using BrowseLists = ::testing::Types<PhotosViewModel, AlbumsViewModel>;
TYPED_TEST_SUITE(BrowseListTest, BrowseLists);

TYPED_TEST(BrowseListTest, PickedRowsAreReadAnewInListOrder) {
  auto model = this->list(4);
  EXPECT_EQ(this->ids(model->items), (std::vector<std::string>{"row0", "row1", "row2", "row3"}));
  EXPECT_TRUE(model->selectedItems().empty()) << "a new list has nothing picked";
  model->items[3]->isSelected = true;
  model->items[1]->isSelected = true;
  EXPECT_EQ(this->ids(model->selectedItems()), (std::vector<std::string>{"row1", "row3"}));
  model->items[1]->isSelected = false;
  EXPECT_EQ(this->ids(model->selectedItems()), (std::vector<std::string>{"row3"}));
  model->setAllSelected(true);
  EXPECT_EQ(model->selectedItems().size(), 4u);
  model->setAllSelected(false);
  EXPECT_TRUE(model->selectedItems().empty());
}

TYPED_TEST(BrowseListTest, SelectAllFollowsTheNativeAdRule) {
  struct Row {
    const char* name;
    size_t rows;
    std::vector<size_t> picked;
    bool adLoaded;
    std::vector<bool> told;
    size_t pickedAfter;
  };
  const Row table[] = {
      // Given some or none picked and a loaded ad: the second question counts one row short.
      {"some picked, ad", 3, {1}, true, {false, false}, 3},
      {"none picked, ad", 3, {}, true, {false, false}, 3},
      {"none of two picked, ad", 2, {}, true, {false, false}, 2},
      // Without an ad the second question undoes the first.
      {"some picked, no ad", 3, {0, 2}, false, {false, true}, 0},
      {"none picked, no ad", 3, {}, false, {false, true}, 0},
      {"one row, none picked, no ad", 1, {}, false, {false, true}, 0},
      // A one-row list takes the path without the ad even when one is loaded.
      {"one row, none picked, ad", 1, {}, true, {false, true}, 0},
      {"one row, picked, ad", 1, {0}, true, {true, false}, 1},
      // Everything picked ends with everything picked, either way.
      {"all picked, no ad", 3, {0, 1, 2}, false, {true, false}, 3},
      {"all picked, ad", 3, {0, 1, 2}, true, {true, false}, 3},
      // No rows: both questions say "all", nothing changes.
      {"no rows, no ad", 0, {}, false, {true, true}, 0},
      {"no rows, ad", 0, {}, true, {true, true}, 0},
  };
  for (const auto& row : table) {
    SCOPED_TRACE(row.name);
    AppLovinNativeAdManual::shared()->arrNativeAd.clear();
    if (row.adLoaded) this->loadNativeAd();
    auto model = this->list(row.rows);
    for (auto i : row.picked) model->items[i]->isSelected = true;
    std::vector<bool> told;
    this->likeTheScreens(model, told);

    model->selectAll();

    EXPECT_EQ(told, row.told);
    EXPECT_EQ(model->selectedItems().size(), row.pickedAfter);
  }
}

TYPED_TEST(BrowseListTest, SelectAllWithoutAClosureChangesNothing) {
  for (bool ad : {false, true}) {
    AppLovinNativeAdManual::shared()->arrNativeAd.clear();
    if (ad) this->loadNativeAd();
    auto model = this->list(3);
    model->items[1]->isSelected = true;
    model->selectAll();
    EXPECT_EQ(this->ids(model->selectedItems()), (std::vector<std::string>{"row1"})) << "ad " << ad;
  }
}

}  // namespace
}  // namespace nimbrel
