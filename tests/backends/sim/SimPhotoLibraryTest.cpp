#include "backends/sim/SimPhotoLibrary.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "backends/sim/SimPlatform.h"
#include "platform/photos/PHAssetCollection.h"
#include "platform/photos/PHAssetResource.h"
#include "platform/photos/PHImageManager.h"
#include "platform/photos/PHPhotoLibrary.h"
#include "platform/uikit/ImageHeader.h"

namespace nimbrel::sim {
namespace {

constexpr const char* kLibrary = R"({"photos": {
  "assets": [
    {"id": "IMG1/L0/001", "created": "2026-03-01T09:30:00Z", "width": 4000, "height": 3000, "fileSize": 2400000},
    {"id": "VID1/L0/001", "mediaType": 2, "created": "2026-03-02T09:30:00Z", "duration": 12.5, "video": "url"},
    {"id": "IMG2/L0/001", "created": "2026-02-01T09:30:00Z", "imageData": false, "editingInput": false},
    {"id": "VID2/L0/001", "mediaType": 2, "created": "2026-03-03T09:30:00Z", "video": "composition"}
  ],
  "albums": [
    {"id": "LIB/L0/040", "title": "Recents", "type": 2, "subtype": 209,
     "assets": ["IMG1/L0/001", "VID1/L0/001", "IMG2/L0/001", "VID2/L0/001"]},
    {"id": "TRIP/L0/040", "title": "Trip", "type": 1, "subtype": 2, "assets": ["IMG2/L0/001", "IMG1/L0/001"]},
    {"id": "VIDS/L0/040", "title": "Videos", "type": 2, "subtype": 202, "assets": ["VID1/L0/001", "VID2/L0/001"]},
    {"id": "TRIP2/L0/040", "title": "Trip", "type": 1, "subtype": 2, "assets": []}
  ]}})";

class SimPhotoLibraryTest : public ::testing::Test {
 protected:
  void start(const std::string& json = kLibrary) {
    platform = std::make_unique<SimPlatform>(*Fixture::parse(json));
  }
  std::vector<std::string> ids(const PHFetchResult<PHAsset>& result) {
    std::vector<std::string> out;
    for (const auto& a : result) out.push_back(a->localIdentifier());
    return out;
  }
  std::unique_ptr<SimPlatform> platform;
};

TEST_F(SimPhotoLibraryTest, AlbumsComeByTypeAndSubtypeInFixtureOrder) {
  start();
  EXPECT_EQ(PHAssetCollection::fetchAssetCollectionsWithType(PHAssetCollectionType::smartAlbum, 209, nullptr).count(), 1u);
  auto regular = PHAssetCollection::fetchAssetCollectionsWithType(PHAssetCollectionType::album, 2, nullptr);
  ASSERT_EQ(regular.count(), 2u);
  EXPECT_EQ(regular[0]->localIdentifier(), "TRIP/L0/040");
  PHFetchOptions byTitle;
  byTitle.predicate = PHPredicateTitleEquals{"Trip"};
  EXPECT_EQ(PHAssetCollection::fetchAssetCollectionsWithType(PHAssetCollectionType::album,
                                                               PHAssetCollectionSubtypeAny, &byTitle).count(), 2u);
  byTitle.predicate = PHPredicateNonEmptyWithLocalizedTitle{"Trip"};
  EXPECT_EQ(PHAssetCollection::fetchAssetCollectionsWithType(PHAssetCollectionType::album,
                                                               PHAssetCollectionSubtypeAny, &byTitle).count(), 1u);
}

TEST_F(SimPhotoLibraryTest, MediaFilterAndNewestFirstOrder) {
  start();
  auto library = PHAssetCollection::fetchAssetCollectionsWithType(PHAssetCollectionType::smartAlbum, 209, nullptr)[0];
  PHFetchOptions images;
  images.sortDescriptors = {{"creationDate", false}};
  images.predicate = PHPredicateMediaTypeIn{{1}};
  EXPECT_EQ(ids(PHAsset::fetchAssetsInAssetCollection(*library, &images)),
            (std::vector<std::string>{"IMG1/L0/001", "IMG2/L0/001"}));
  images.predicate = PHPredicateMediaTypeIn{{1, 2}};
  EXPECT_EQ(ids(PHAsset::fetchAssetsInAssetCollection(*library, &images)),
            (std::vector<std::string>{"VID2/L0/001", "VID1/L0/001", "IMG1/L0/001", "IMG2/L0/001"}));
  EXPECT_EQ(ids(PHAsset::fetchAssetsInAssetCollection(*library, nullptr)).front(), "IMG1/L0/001")
      << "without options the album's own order";
}

TEST_F(SimPhotoLibraryTest, AssetAddressesFindTheirAssetByTheIdentifiersHead) {
  start();
  auto found = PHAsset::fetchAssetsWithALAssetURLs(
      {*URL::withString("assets-library://asset/asset.MOV?id=VID1&extMOV")}, nullptr);
  EXPECT_EQ(ids(found), (std::vector<std::string>{"VID1/L0/001"}));
  EXPECT_EQ(PHAsset::fetchAssetsWithALAssetURLs({*URL::withString("assets-library://asset/asset.JPG?id=GONE&extJPG")},
                                                nullptr).count(), 0u);
}

TEST_F(SimPhotoLibraryTest, ResourcesAndBackingFilesFollowTheFixture) {
  start();
  auto asset = PHAsset::fetchAssetsWithLocalIdentifiers({"IMG1/L0/001"}, nullptr)[0];
  auto resources = PHAssetResource::assetResourcesForAsset(*asset);
  ASSERT_EQ(resources.size(), 1u);
  EXPECT_EQ(resources[0]->originalFilename(), "IMG_0001.JPG");
  EXPECT_EQ(resources[0]->valueForKey("fileSize")->integer(), 2400000);
  EXPECT_EQ(std::filesystem::file_size(asset->record()->backingPath), 2400000u);
  EXPECT_EQ(asset->valueForKey("filename")->string(), "IMG_0001.JPG");
}

TEST_F(SimPhotoLibraryTest, RequestsAnswerAsTheFixtureSays) {
  start();
  auto manager = PHImageManager::defaultManager();
  auto image = PHAsset::fetchAssetsWithLocalIdentifiers({"IMG1/L0/001"}, nullptr)[0];
  auto noData = PHAsset::fetchAssetsWithLocalIdentifiers({"IMG2/L0/001"}, nullptr)[0];
  PHImageRequestOptions sync;
  sync.synchronous = true;
  std::optional<UIImage> thumbnail;
  manager->requestImageForAsset(image, {300, 300}, PHImageContentMode::aspectFill, &sync,
                                [&](std::optional<UIImage> i, const PHImageRequestInfo&) { thumbnail = i; });
  ASSERT_TRUE(thumbnail) << "a synchronous request answers before it returns";
  EXPECT_EQ(thumbnail->describe(), "pixels:400x300");

  std::vector<std::string> answers;
  manager->requestImageDataForAsset(image, nullptr, [&](std::optional<Data> d, std::string, int, const PHImageRequestInfo&) {
    answers.push_back(d ? std::to_string(ImageHeader::read(*d)->width) : "none");
  });
  manager->requestImageDataForAsset(noData, nullptr, [&](std::optional<Data> d, std::string, int, const PHImageRequestInfo&) {
    answers.push_back(d ? "data" : "none");
  });
  auto cancelled = manager->requestImageForAsset(image, {10, 10}, PHImageContentMode::aspectFit, nullptr,
                                                 [&](auto, const auto&) { answers.push_back("cancelled one answered"); });
  manager->cancelImageRequest(cancelled);
  EXPECT_TRUE(answers.empty()) << "asynchronous requests answer one turn later";
  platform->runLoop().runUntilIdle();
  EXPECT_EQ(answers, (std::vector<std::string>{"4000", "none"}));

  std::vector<std::string> videos;
  for (const char* id : {"VID1/L0/001", "VID2/L0/001", "IMG1/L0/001"}) {
    auto asset = PHAsset::fetchAssetsWithLocalIdentifiers({id}, nullptr)[0];
    manager->requestAVAssetForVideo(asset, nullptr, [&videos](std::shared_ptr<AVAsset> a, const PHImageRequestInfo&) {
      if (auto u = std::dynamic_pointer_cast<AVURLAsset>(a)) {
        videos.push_back("url " + u->url().lastPathComponent());
      } else {
        videos.push_back(a ? "other" : "none");
      }
    });
  }
  platform->runLoop().runUntilIdle();
  EXPECT_EQ(videos, (std::vector<std::string>{"url IMG_0002.MOV", "other", "none"}));
}

// Confirmed and refused deletes (code 3072) are read through the app in LibraryChangesTest and the
// e2e images_viewer_favourite_share_delete scenario; reading past an empty fetch result ends the
// process in HomeViewControllerDeathTest.
using SimPhotoLibraryDeathTest = SimPhotoLibraryTest;

TEST_F(SimPhotoLibraryDeathTest, ChangeRequestsOutsideAChangeBlockEndTheProcess) {
  start();
  EXPECT_DEATH(PHAssetChangeRequest::deleteAssets({}), "can only be called from inside of -\\[PHPhotoLibrary performChanges:\\]");
}

}  // namespace
}  // namespace nimbrel::sim
