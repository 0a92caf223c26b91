#include "app/media/Settings.h"

#include <gtest/gtest.h>

#include <limits>
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

TEST_F(SettingsTest, SelectionIsFilledWithTheViewTintAndPreviewsOnlyAllowTheNetwork) {
  Settings settings;
  EXPECT_EQ(settings.theme()->selectionFillColor(), UIView().tintColor().value_or(UIColor::systemBlueColor()));
  EXPECT_EQ(settings.selection()->max(), std::numeric_limits<std::int64_t>::max());
  auto photo = settings.fetch()->preview()->photoOptions();
  PHImageRequestOptions plain;
  EXPECT_TRUE(photo->networkAccessAllowed);
  EXPECT_EQ(std::tuple(photo->version, photo->deliveryMode, photo->resizeMode, photo->synchronous),
            std::tuple(plain.version, plain.deliveryMode, plain.resizeMode, plain.synchronous));
  auto shared = Fetch::shared()->preview()->photoOptions();
  EXPECT_EQ(std::tuple(shared->networkAccessAllowed, shared->resizeMode, shared->synchronous, shared->deliveryMode),
            std::tuple(true, 2, true, 0));
}

TEST_F(SettingsTest, CellsPerRowBySizeClasses) {
  using enum UIUserInterfaceSizeClass;
  struct Row {
    UIUserInterfaceSizeClass vertical, horizontal;
    int cells;
  };
  const Row rows[] = {
      {regular, regular, 7},         {compact, compact, 5},         {regular, compact, 3},
      {compact, regular, 3},         {unspecified, unspecified, 3}, {unspecified, regular, 3},
      {regular, unspecified, 3},     {unspecified, compact, 3},     {compact, unspecified, 3},
  };
  auto cellsPerRow = Settings().list()->cellsPerRow();
  for (const auto& row : rows) {
    EXPECT_EQ(cellsPerRow(row.vertical, row.horizontal), row.cells)
        << static_cast<int>(row.vertical) << "+" << static_cast<int>(row.horizontal);
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

TEST_F(SettingsTest, APartIsKeptOnceMadeAndAWrittenValueIsNeverMade) {
  Settings settings;
  EXPECT_EQ(settings.theme(), settings.theme());
  settings.fetch()->album()->setFetchResults({});
  EXPECT_TRUE(settings.fetch()->album()->fetchResults().empty());
  EXPECT_EQ(libraryReads(), 0u);
}

TEST_F(SettingsTest, SharedFetchIsOneInstanceThatReadsTheLibraryOnlyForAlbums) {
  auto fetch = Fetch::shared();
  EXPECT_EQ(Fetch::shared(), fetch);
  fetch->preview()->photoOptions();
  fetch->assets()->options();
  EXPECT_EQ(libraryReads(), 0u);
  EXPECT_EQ(fetch->album()->fetchResults().size(), 6u);
  EXPECT_EQ(library->collectionReads(), 6u);
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
  struct Row {
    const char* name;
    bool changeBeforeRead;
    std::vector<int> expected;
  };
  const Row rows[] = {
      {"types changed before the first read", true, {1, 2}},
      {"types changed after the first read", false, {1}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    auto assets = std::make_shared<Fetch::Assets>();
    std::shared_ptr<PHFetchOptions> first;
    if (!row.changeBeforeRead) first = assets->options();
    assets->setSupportedMediaTypes({MediaTypes::image, MediaTypes::video});
    auto options = assets->options();
    if (first) {
      EXPECT_EQ(options, first) << "never rebuilt";
    }
    EXPECT_EQ(mediaTypes(*options), row.expected);
    ASSERT_EQ(options->sortDescriptors.size(), 1u);
    EXPECT_FALSE(options->sortDescriptors[0].ascending);
    EXPECT_EQ(assets->supportedMediaTypes().size(), 2u);
  }
}

}  // namespace
}  // namespace nimbrel
