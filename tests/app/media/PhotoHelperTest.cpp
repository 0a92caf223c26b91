#include "app/media/photoHelper.h"

#include <gtest/gtest.h>

#include "app/SimTest.h"
#include "app/media/Fetch.h"
#include "platform/photos/PhotoLibrarySource.h"
#include "PhotoLibraryFixture.h"

namespace nimbrel {
namespace {

class PhotoHelperTest : public testing::SimTest {
 protected:
  void SetUp() override { start(testing::kMixedLibrary); }
  static std::string idOf(const photoHelper::AlbumResult& result) {
    if (result.isError()) return "error";
    return (*result.asset())->localIdentifier();
  }
  static std::vector<std::string> titles(const std::vector<std::shared_ptr<PHAssetCollection>>& albums) {
    std::vector<std::string> out;
    for (const auto& a : albums) out.push_back(a->localizedTitle().value_or("-"));
    return out;
  }
};

TEST_F(PhotoHelperTest, FindingAnAlbumByNameWantsAUserAlbumWithSomethingInIt) {
  const std::pair<const char*, const char*> rows[] = {
      {"Trip", "TRIP/L0/040"},  // the first of two
      {"Empty", "error"},       // exists, but holds nothing
      {"Recents", "error"},     // a smart album
      {"Nowhere", "error"},
  };
  for (auto [name, expected] : rows) EXPECT_EQ(idOf(photoHelper::getAlbum(name)), expected) << name;
}

// Find-or-create takes an empty album of the title without a change, makes a missing one once and
// reads it back, and answers error when the library refuses the creation.
TEST_F(PhotoHelperTest, FindOrCreate) {
  std::optional<std::string> found, made, again;
  photoHelper::getOrCreateAlbum("Empty", [&](photoHelper::AlbumResult r) { found = idOf(r); });
  EXPECT_EQ(found, "EMPTY/L0/040");
  EXPECT_EQ(calls("photos.performChanges"), 0u);

  photoHelper::getOrCreateAlbum("Holiday", [&](photoHelper::AlbumResult r) {
    ASSERT_FALSE(r.isError());
    made = (*r.asset())->localizedTitle().value_or("-") + " " + (*r.asset())->localIdentifier();
  });
  EXPECT_FALSE(made);
  settle();
  ASSERT_TRUE(made);
  EXPECT_TRUE(photoHelper::getAlbum("Holiday").isError()) << "new and empty";
  photoHelper::getOrCreateAlbum("Holiday", [&](photoHelper::AlbumResult r) { again = idOf(r); });
  EXPECT_EQ("Holiday " + again.value_or("none"), *made) << "found, not made twice";

  std::optional<bool> error;
  PhotoLibrarySource::install(nullptr);  // the empty library refuses every change
  photoHelper::getOrCreateAlbum("Away", [&](photoHelper::AlbumResult r) { error = r.isError(); });
  settle();
  EXPECT_EQ(error, true);
}

TEST_F(PhotoHelperTest, ASavedImageLandsInTheAlbum) {
  UIImage::Pixels pixels;
  pixels.width = 64;
  pixels.height = 48;
  std::optional<bool> saved;
  photoHelper::saveImage(UIImage::withPixels(pixels), album("EMPTY/L0/040"),
                         [&](bool ok, std::optional<NSError>) { saved = ok; });
  settle();
  EXPECT_EQ(saved, true);
  auto inside = PHAsset::fetchAssetsInAssetCollection(*album("EMPTY/L0/040"), nullptr);
  ASSERT_EQ(inside.count(), 1u);
  EXPECT_EQ(inside[0]->pixelWidth(), 64);
  EXPECT_EQ(idOf(photoHelper::getAlbum("Empty")), "EMPTY/L0/040");
}

TEST_F(PhotoHelperTest, AssetsOfAnAlbumByDateAndCount) {
  const std::tuple<long, bool, std::vector<std::string>> rows[] = {
      {0, true, {"A1/L0/001", "I2/L0/001", "V2/L0/001", "V1/L0/001", "I1/L0/001"}},
      {0, false, {"I1/L0/001", "V1/L0/001", "V2/L0/001", "I2/L0/001", "A1/L0/001"}},
      {2, true, {"A1/L0/001", "I2/L0/001"}},
      {2, false, {"I1/L0/001", "V1/L0/001"}},
      {9, false, {"I1/L0/001", "V1/L0/001", "V2/L0/001", "I2/L0/001", "A1/L0/001"}},
  };
  for (const auto& [count, newestFirst, expected] : rows) {
    FetchOptions options;
    options.count = count;
    options.newestFirst = newestFirst;
    auto result = photoHelper::getAssets(*album("LIB/L0/040"), options);
    ASSERT_NE(result.assets(), nullptr);
    EXPECT_EQ(ids(*result.assets()), expected) << count << " " << newestFirst;
  }
}

TEST_F(PhotoHelperTest, ImagesAtTheAskedSizeOrTheirOwn) {
  auto assets = PHAsset::fetchAssetsWithLocalIdentifiers({"I1/L0/001", "I2/L0/001"}, nullptr).objects();
  auto describe = [](const AssetFetchResult<UIImage>& r) {
    std::vector<std::string> out;
    for (const auto& i : *r.assets()) out.push_back(i.describe());
    return out;
  };
  FetchOptions own;
  EXPECT_EQ(describe(photoHelper::getImages(assets, own)), (std::vector<std::string>{"pixels:4000x3000", "pixels:100x50"}));
  FetchOptions small;
  small.size = CGSize{100, 100};
  EXPECT_EQ(describe(photoHelper::getImages(assets, small)), (std::vector<std::string>{"pixels:133x100", "pixels:100x50"}))
      << "aspect fill";
}

TEST_F(PhotoHelperTest, AllAlbumsUserThenSmartEachByTitle) {
  EXPECT_EQ(titles(photoHelper::allAlbums()),
            (std::vector<std::string>{"Clips", "Empty", "Sounds", "Trip", "Trip", "Favorites", "Hidden", "Panoramas",
                                      "Recents", "Selfies", "Videos"}));
}

TEST_F(PhotoHelperTest, TheNewestAssetIsLookedUpInTheBackground) {
  std::vector<std::string> answers;
  auto ask = [&] {
    photoHelper::getNewestAsset([&](photoHelper::AssetsResult r) {
      EXPECT_FALSE(loop().isMainThread());
      answers.push_back(r.isError() ? "error" : (*r.asset())->localIdentifier());
    });
  };
  ask();
  ASSERT_EQ(loop().pendingBackgroundCount(), 1u);
  EXPECT_EQ(loop().backgroundQos(0), QualityOfService::userInteractive);
  settle();
  PhotoLibrarySource::install(nullptr);
  ask();
  settle();
  EXPECT_EQ(answers, (std::vector<std::string>{"I2/L0/001", "error"}))
      << "the newest image (videos and audio are not supported), then nothing in an empty library";
  EXPECT_EQ(Fetch::shared()->assets()->options()->fetchLimit, 0u) << "the shared options stay as they were";
}

}  // namespace
}  // namespace nimbrel
