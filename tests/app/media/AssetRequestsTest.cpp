#include <gtest/gtest.h>

#include "app/SimTest.h"
#include "app/media/PhotoLibraryAccess.h"
#include "ObservedPhotoLibrary.h"

namespace nimbrel {
namespace {

class AssetRequestsTest : public testing::SimTest {
 protected:
  void SetUp() override {
    start(R"({"photos": {"assets": [
      {"id": "IMG/L0/001", "filename": "IMG_0001.JPG", "width": 4000, "height": 3000},
      {"id": "NOINPUT/L0/001", "editingInput": false},
      {"id": "WIDE/L0/001", "width": 300, "height": 100},
      {"id": "NODATA/L0/001", "imageData": false},
      {"id": "SMALL/L0/001", "width": 20, "height": 10},
      {"id": "VURL/L0/001", "mediaType": 2, "filename": "CLIP.MOV", "video": "url"},
      {"id": "VCOMP/L0/001", "mediaType": 2, "video": "composition"},
      {"id": "VNONE/L0/001", "mediaType": 2, "video": "none"},
      {"id": "AUDIO/L0/001", "mediaType": 3},
      {"id": "UNKNOWN/L0/001", "mediaType": 0}
    ]}})");
  }
  static std::vector<std::string> sizes(const std::vector<UIImage>& images) {
    std::vector<std::string> out;
    for (const auto& i : images) out.push_back(i.describe());
    return out;
  }
};

TEST_F(AssetRequestsTest, AddressesPerMediaType) {
  // Whether the request answers, and the answered URL's file name; none for an answer without one.
  const std::tuple<const char*, bool, std::optional<std::string>> rows[] = {
      {"IMG/L0/001", true, "IMG_0001.JPG"},
      {"VURL/L0/001", true, "CLIP.MOV"},
      {"VCOMP/L0/001", true, std::nullopt},
      {"VNONE/L0/001", true, std::nullopt},
      {"AUDIO/L0/001", false, std::nullopt},
      {"UNKNOWN/L0/001", false, std::nullopt},
  };
  for (const auto& [id, answers, fileName] : rows) {
    SCOPED_TRACE(id);
    int answered = 0;
    std::optional<URL> url;
    requestAssetURL(asset(id), [&](std::optional<URL> u) {
      ++answered;
      url = u;
    });
    settle();
    EXPECT_EQ(answered, answers ? 1 : 0);
    ASSERT_EQ(url.has_value(), fileName.has_value());
    if (url) {
      EXPECT_TRUE(url->isFileURL());
      EXPECT_EQ(url->lastPathComponent(), *fileName);
      EXPECT_EQ(url->path(), asset(id)->record()->backingPath);
    }
  }
}

// Data that is no image leaves no entry but lets the completion run.
TEST_F(AssetRequestsTest, ShareImagesArriveInOrderOnTheMainQueueLeavingOutDataThatIsNoImage) {
  auto observed = testing::ObservedPhotoLibrary::install();
  observed->imageDataAnswer = [](const PHAssetRecord& r) -> std::optional<std::optional<Data>> {
    if (r.localIdentifier == "IMG/L0/001") return std::optional<Data>(Data{'n', 'o', 't'});
    return std::nullopt;
  };
  std::optional<std::vector<std::string>> shared;
  requestShareImages(assets({"WIDE/L0/001", "IMG/L0/001", "SMALL/L0/001"}), [&](std::vector<UIImage> images) {
    EXPECT_TRUE(loop().isMainThread());
    shared = sizes(images);
  });
  EXPECT_FALSE(shared);
  settle();
  ASSERT_TRUE(shared);
  EXPECT_EQ(*shared, (std::vector<std::string>{"pixels:300x100", "pixels:20x10"}));
}

// An asset without image data holds the completion back for good; nothing to share completes empty
// one turn later.
TEST_F(AssetRequestsTest, AnAssetWithoutImageDataHoldsTheCompletionBackAndNothingToShareCompletesEmpty) {
  bool completed = false;
  requestShareImages(assets({"IMG/L0/001", "NODATA/L0/001", "SMALL/L0/001"}),
                     [&](std::vector<UIImage>) { completed = true; });
  settle();
  advance(3600);
  EXPECT_FALSE(completed);
  EXPECT_EQ(loop().pendingMainCount(), 0u);
  EXPECT_EQ(loop().pendingBackgroundCount(), 0u);

  std::optional<size_t> count;
  requestShareImages({}, [&](std::vector<UIImage> images) { count = images.size(); });
  EXPECT_FALSE(count);
  loop().runMainUntilIdle();
  EXPECT_EQ(count, 0u);
}

using AssetRequestsDeathTest = AssetRequestsTest;

TEST_F(AssetRequestsDeathTest, APhotoWithoutAnEditingInputEndsTheProcess) {
  EXPECT_DEATH(
      {
        requestAssetURL(asset("NOINPUT/L0/001"), [](std::optional<URL>) {});
        settle();
      },
      "Fatal error: Unexpectedly found nil while unwrapping an Optional value: file Nimbrel/PHAsset\\+Extension");
}

}  // namespace
}  // namespace nimbrel
