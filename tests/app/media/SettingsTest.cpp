#include "app/media/Settings.h"

#include <gtest/gtest.h>

#include <limits>

#include "app/SimTest.h"
#include "app/media/Fetch.h"
#include "platform/foundation/SharedInstance.h"
#include "platform/photos/PHPhotoLibrary.h"
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

TEST_F(SettingsTest, DefaultsOfEveryPart) {
  Settings settings;
  auto theme = settings.theme();
  EXPECT_EQ(theme->backgroundColor(), UIColor::whiteColor());
  EXPECT_EQ(theme->selectionFillColor(), UIColor::systemBlueColor());
  EXPECT_EQ(theme->selectionStrokeColor(), UIColor::whiteColor());
  EXPECT_EQ(theme->selectionShadowColor(), UIColor::blackColor());
  EXPECT_EQ(settings.selection()->max(), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(settings.selection()->min(), 1);
  EXPECT_EQ(settings.list()->spacing(), 2.0);
  EXPECT_TRUE(settings.dismiss()->enabled());
  EXPECT_TRUE(settings.preview()->enabled());

  auto preview = settings.fetch()->preview();
  PHImageRequestOptions plain;
  auto photo = preview->photoOptions();
  EXPECT_TRUE(photo->networkAccessAllowed);
  EXPECT_EQ(photo->resizeMode, plain.resizeMode) << "only the network is allowed";
  EXPECT_EQ(photo->deliveryMode, plain.deliveryMode);
  EXPECT_EQ(photo->synchronous, plain.synchronous);
  EXPECT_EQ(photo->version, plain.version);
  EXPECT_TRUE(preview->livePhotoOptions()->networkAccessAllowed);
  EXPECT_TRUE(preview->videoOptions()->networkAccessAllowed);
  EXPECT_EQ(settings.fetch()->assets()->supportedMediaTypes(), std::set<MediaTypes>{MediaTypes::image});
  EXPECT_EQ(mediaTypes(*settings.fetch()->assets()->options()), std::vector<int>{1});
  auto albumOptions = settings.fetch()->album()->options();
  EXPECT_TRUE(albumOptions->sortDescriptors.empty());
  EXPECT_TRUE(std::holds_alternative<std::monostate>(albumOptions->predicate));
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

TEST_F(SettingsTest, AWriteReplacesAFieldOrAWholePart) {
  Settings settings;
  auto theme = settings.theme();
  EXPECT_EQ(settings.theme(), theme) << "a part is kept once made";
  theme->setBackgroundColor(UIColor::blackColor());
  EXPECT_EQ(settings.theme()->backgroundColor(), UIColor::blackColor());
  settings.setTheme(std::make_shared<Settings::Theme>());
  EXPECT_EQ(settings.theme()->backgroundColor(), UIColor::whiteColor());

  settings.selection()->setMax(3);
  settings.dismiss()->setEnabled(false);
  settings.preview()->setEnabled(false);
  settings.list()->setCellsPerRow([](auto, auto) { return 1; });
  EXPECT_EQ(settings.selection()->max(), 3);
  EXPECT_FALSE(settings.dismiss()->enabled());
  EXPECT_FALSE(settings.preview()->enabled());
  EXPECT_EQ(settings.list()->cellsPerRow()(UIUserInterfaceSizeClass::regular, UIUserInterfaceSizeClass::regular), 1);

  settings.fetch()->album()->setFetchResults({});
  EXPECT_TRUE(settings.fetch()->album()->fetchResults().empty());
  EXPECT_EQ(libraryReads(), 0u) << "a written value is never made";
}

TEST_F(SettingsTest, SharedFetchIsOneInstanceMadeLazily) {
  auto fetch = Fetch::shared();
  EXPECT_EQ(Fetch::shared(), fetch);
  auto preview = fetch->preview();
  auto photo = preview->photoOptions();
  EXPECT_TRUE(photo->networkAccessAllowed);
  EXPECT_EQ(photo->resizeMode, 2);
  EXPECT_TRUE(photo->synchronous);
  EXPECT_EQ(photo->deliveryMode, 0);
  EXPECT_TRUE(preview->livePhotoOptions()->networkAccessAllowed);
  EXPECT_TRUE(preview->videoOptions()->networkAccessAllowed);
  EXPECT_EQ(preview->photoOptions(), photo) << "kept";
  EXPECT_EQ(libraryReads(), 0u);
  EXPECT_EQ(counts(fetch->album()->fetchResults()).size(), 6u);
  EXPECT_EQ(library->collectionReads(), 6u);

  SharedInstances::resetAll();
  EXPECT_NE(Fetch::shared(), fetch);
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
    if (first) EXPECT_EQ(options, first) << "never rebuilt";
    EXPECT_EQ(mediaTypes(*options), row.expected);
    ASSERT_EQ(options->sortDescriptors.size(), 1u);
    EXPECT_FALSE(options->sortDescriptors[0].ascending);
    EXPECT_EQ(assets->supportedMediaTypes().size(), 2u);
  }
}

}  // namespace
}  // namespace nimbrel
