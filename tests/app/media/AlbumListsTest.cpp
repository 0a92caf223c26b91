#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

#include "app/SimTest.h"
#include "app/media/PhotoLibraryAccess.h"
#include "platform/photos/PHPhotoLibrary.h"
#include "PhotoLibraryFixture.h"

namespace nimbrel {
namespace {

class AlbumListsTest : public testing::SimTest {
 protected:
  void SetUp() override { start(testing::kMixedLibrary); }
};

TEST_F(AlbumListsTest, AlbumsComeBySourceAndHoldTheRequestedKind) {
  EXPECT_EQ(ids(albumsForMediaType(MediaTypes::image)),
            (std::vector<std::string>{"LIB/L0/040", "FAV/L0/040", "TRIP/L0/040", "TRIP2/L0/040", "SELF/L0/040"}))
      << "user library first; both albums titled Trip; no videos-only album; I1's albums each listed";
  EXPECT_EQ(ids(albumsForMediaType(MediaTypes::video)),
            (std::vector<std::string>{"LIB/L0/040", "CLIPS/L0/040", "VIDS/L0/040"}))
      << "the videos album last";
  // An album emptied by a deletion leaves the list.
  bool done = false;
  PHPhotoLibrary::sharedPhotoLibrary().performChanges(
      [] { PHAssetChangeRequest::deleteAssets(PHAsset::fetchAssetsWithLocalIdentifiers({"V1/L0/001"}, nullptr).objects()); },
      [&](bool, std::optional<NSError>) { done = true; });
  settle();
  ASSERT_TRUE(done);
  EXPECT_EQ(ids(albumsForMediaType(MediaTypes::video)), (std::vector<std::string>{"LIB/L0/040", "VIDS/L0/040"}));
}

// Three fetches of an album are under way at once; whichever order the background queue finishes
// them in, each completion gets its own album's items of the asked kind, newest first, on that queue.
TEST_F(AlbumListsTest, ConcurrentAlbumFetchesCompleteInTheOrderTheyFinish) {
  struct Request {
    const char* name;
    const char* album;
    MediaTypes type;
    std::vector<std::string> expected;
  };
  const std::vector<Request> requests = {
      {"library images", "LIB/L0/040", MediaTypes::image, {"I2/L0/001", "I1/L0/001"}},
      {"library videos", "LIB/L0/040", MediaTypes::video, {"V2/L0/001", "V1/L0/001"}},
      {"trip images", "TRIP2/L0/040", MediaTypes::image, {"I2/L0/001", "I1/L0/001"}},
  };
  std::vector<size_t> order(requests.size());
  std::iota(order.begin(), order.end(), 0);
  do {
    SCOPED_TRACE(::testing::PrintToString(order));
    std::vector<std::string> arrived;
    for (const auto& r : requests) {
      fetchAlbumAssets(album(r.album), r.type, [&, r](long count, PHFetchResult<PHAsset> result) {
        EXPECT_FALSE(loop().isMainThread()) << r.name;
        EXPECT_EQ(count, static_cast<long>(r.expected.size())) << r.name;
        EXPECT_EQ(ids(result), r.expected) << r.name;
        arrived.push_back(r.name);
      });
    }
    ASSERT_EQ(loop().pendingBackgroundCount(), requests.size());
    for (size_t i = 0; i < requests.size(); ++i) {
      EXPECT_EQ(loop().backgroundQos(i), QualityOfService::userInteractive);
    }
    EXPECT_TRUE(arrived.empty()) << "nothing is fetched on the caller's thread";

    std::vector<size_t> waiting(requests.size());
    std::iota(waiting.begin(), waiting.end(), 0);
    std::vector<std::string> expectedArrival;
    for (size_t next : order) {
      auto at = std::find(waiting.begin(), waiting.end(), next);
      loop().runBackgroundTask(static_cast<size_t>(at - waiting.begin()));
      waiting.erase(at);
      expectedArrival.push_back(requests[next].name);
    }
    EXPECT_EQ(arrived, expectedArrival);
    EXPECT_EQ(loop().pendingMainCount(), 0u) << "the completions do not hop to the main queue";
  } while (std::next_permutation(order.begin(), order.end()));
}

TEST_F(AlbumListsTest, AFetchReadsTheAlbumWhenItRunsNotWhenItIsAsked) {
  std::optional<long> count;
  fetchAlbumAssets(album("LIB/L0/040"), MediaTypes::video, [&](long n, PHFetchResult<PHAsset>) { count = n; });
  PHPhotoLibrary::sharedPhotoLibrary().performChanges(
      [] { PHAssetChangeRequest::deleteAssets(PHAsset::fetchAssetsWithLocalIdentifiers({"V1/L0/001"}, nullptr).objects()); },
      nullptr);
  // The fetch is oldest in the queue; run the change and its answer first.
  loop().runBackgroundTask(1);
  while (loop().pendingBackgroundCount() > 1) loop().runBackgroundTask(1);
  EXPECT_FALSE(count);
  loop().runBackgroundTask(0);
  EXPECT_EQ(count, 1);
}

}  // namespace
}  // namespace nimbrel
