#include "app/media/Settings.h"

#include <gtest/gtest.h>

#include <thread>

#include "app/SimTest.h"
#include "app/media/Fetch.h"
#include "platform/foundation/SharedInstance.h"
#include "platform/photos/PHPhotoLibrary.h"
#include "platform/uikit/UIView.h"
#include "ObservedPhotoLibrary.h"
#include "PhotoLibraryFixture.h"

namespace nimbrel {
namespace {

class SettingsTest : public testing::SimTest {
 protected:
  void SetUp() override {
    start(testing::kMixedLibrary);
    library = testing::ObservedPhotoLibrary::install();
  }
  size_t libraryReads() const { return library->collectionReads() + library->assetReads(); }
  static std::vector<size_t> counts(const std::vector<PHFetchResult<PHAssetCollection>>& results) {
    std::vector<size_t> out;
    for (const auto& r : results) out.push_back(r.count());
    return out;
  }
  static std::vector<int> mediaTypes(const PHFetchOptions& options) {
    auto p = std::get_if<PHPredicateMediaTypeIn>(&options.predicate);
    return p ? p->mediaTypes : std::vector<int>{-1};
  }

  std::shared_ptr<testing::ObservedPhotoLibrary> library;
};

TEST_F(SettingsTest, CellsPerRowBySizeClasses) {
  using enum UIUserInterfaceSizeClass;
  const std::tuple<UIUserInterfaceSizeClass, UIUserInterfaceSizeClass, int> rows[] = {
      {regular, regular, 7},         {compact, compact, 5},         {regular, compact, 3},
      {compact, regular, 3},         {unspecified, unspecified, 3}, {unspecified, regular, 3},
      {regular, unspecified, 3},     {unspecified, compact, 3},     {compact, unspecified, 3},
  };
  auto cellsPerRow = Settings().list()->cellsPerRow();
  for (auto [vertical, horizontal, cells] : rows) {
    EXPECT_EQ(cellsPerRow(vertical, horizontal), cells) << static_cast<int>(vertical) << "+" << static_cast<int>(horizontal);
  }
}

TEST_F(SettingsTest, NothingTouchesTheLibraryUntilTheAlbumFetchesAreRead) {
  Settings settings;
  settings.theme()->selectionFillColor();
  settings.list()->cellsPerRow();
  settings.fetch()->assets()->options();
  settings.fetch()->preview()->photoOptions();
  auto album = settings.fetch()->album();
  album->options();
  EXPECT_EQ(libraryReads(), 0u);

  auto results = album->fetchResults();
  EXPECT_EQ(library->collectionReads(), 6u) << "one fetch per album source";
  // Sources: user library, favourites, user albums (Trip, Clips, Empty, Trip, Sounds), selfies,
  // panoramas, videos.
  EXPECT_EQ(counts(results), (std::vector<size_t>{1, 1, 5, 1, 1, 1}));

  PHPhotoLibrary::sharedPhotoLibrary().performChanges(
      [] { PHAssetCollectionChangeRequest::deleteAssetCollections(
               PHAssetCollection::fetchAssetCollectionsWithLocalIdentifiers({"EMPTY/L0/040"}, nullptr)); },
      nullptr);
  settle();
  size_t before = library->collectionReads();
  EXPECT_EQ(counts(album->fetchResults()), (std::vector<size_t>{1, 1, 5, 1, 1, 1})) << "made once, then kept";
  EXPECT_EQ(library->collectionReads(), before);
}

TEST_F(SettingsTest, SelectionIsFilledWithTheViewTintAWrittenValueIsNeverMadeAndTheSharedFetchReadsOnlyForAlbums) {
  Settings settings;
  EXPECT_EQ(settings.theme()->selectionFillColor(), UIView().tintColor().value_or(UIColor::systemBlueColor()));
  settings.fetch()->album()->setFetchResults({});
  EXPECT_TRUE(settings.fetch()->album()->fetchResults().empty());
  auto fetch = Fetch::shared();
  fetch->preview()->photoOptions();
  fetch->assets()->options();
  EXPECT_EQ(libraryReads(), 0u);
  SharedInstances::resetAll();
  EXPECT_NE(Fetch::shared(), fetch);
}

// The newest-asset lookup reads the shared options on a background queue while screens read them
// on the main thread: every first read must see the one value made.
TEST_F(SettingsTest, ConcurrentFirstReadsOfTheSharedFetchSeeOneValue) {
  constexpr int kThreads = 4;
  std::vector<std::shared_ptr<PHFetchOptions>> seen(kThreads);
  std::vector<size_t> albumCounts(kThreads);
  {
    std::vector<std::jthread> threads;
    for (int i = 0; i < kThreads; ++i) {
      threads.emplace_back([&seen, &albumCounts, i] {
        seen[i] = Fetch::shared()->assets()->options();
        albumCounts[i] = Fetch::shared()->album()->fetchResults().size();
      });
    }
  }
  for (int i = 1; i < kThreads; ++i) EXPECT_EQ(seen[i], seen[0]);
  EXPECT_EQ(albumCounts, std::vector<size_t>(kThreads, 6));
  EXPECT_EQ(library->collectionReads(), 6u) << "the album sources were fetched once";
}

TEST_F(SettingsTest, AssetOptionsTakeTheMediaTypesOfTheirFirstRead) {
  auto before = std::make_shared<Fetch::Assets>();
  before->setSupportedMediaTypes({MediaTypes::image, MediaTypes::video});
  EXPECT_EQ(mediaTypes(*before->options()), (std::vector<int>{1, 2})) << "types changed before the first read";
  auto after = std::make_shared<Fetch::Assets>();
  auto first = after->options();
  after->setSupportedMediaTypes({MediaTypes::image, MediaTypes::video});
  EXPECT_EQ(after->options(), first) << "never rebuilt";
  EXPECT_EQ(mediaTypes(*first), std::vector<int>{1});
  EXPECT_EQ(after->supportedMediaTypes().size(), 2u);
  ASSERT_EQ(first->sortDescriptors.size(), 1u);
  EXPECT_FALSE(first->sortDescriptors[0].ascending);
}

}  // namespace
}  // namespace nimbrel
