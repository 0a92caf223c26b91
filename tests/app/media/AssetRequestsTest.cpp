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
  static std::shared_ptr<PHAsset> asset(const std::string& id) {
    return PHAsset::fetchAssetsWithLocalIdentifiers({id}, nullptr)[0];
  }
  static std::vector<std::shared_ptr<PHAsset>> assets(const std::vector<std::string>& ids) {
    return PHAsset::fetchAssetsWithLocalIdentifiers(ids, nullptr).objects();
  }
  static std::vector<std::string> sizes(const std::vector<UIImage>& images) {
    std::vector<std::string> out;
    for (const auto& i : images) out.push_back(i.describe());
    return out;
  }
};

TEST_F(AssetRequestsTest, AddressesPerMediaType) {
  struct Row {
    const char* id;
    bool answers;
    std::optional<std::string> fileName;  // of the answered URL; none for an answer without one
  };
  const Row rows[] = {
      {"IMG/L0/001", true, "IMG_0001.JPG"},
      {"VURL/L0/001", true, "CLIP.MOV"},
      {"VCOMP/L0/001", true, std::nullopt},
      {"VNONE/L0/001", true, std::nullopt},
      {"AUDIO/L0/001", false, std::nullopt},
      {"UNKNOWN/L0/001", false, std::nullopt},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.id);
    int answers = 0;
    std::optional<URL> answered;
    requestAssetURL(asset(row.id), [&](std::optional<URL> url) {
      ++answers;
      answered = url;
    });
    settle();
    EXPECT_EQ(answers, row.answers ? 1 : 0);
    ASSERT_EQ(answered.has_value(), row.fileName.has_value());
    if (answered) {
      EXPECT_TRUE(answered->isFileURL());
      EXPECT_EQ(answered->lastPathComponent(), *row.fileName);
      EXPECT_EQ(answered->path(), asset(row.id)->record()->backingPath);
    }
  }
}

TEST_F(AssetRequestsTest, ShareImagesArriveInOrderOnTheMainQueue) {
  std::optional<std::vector<std::string>> shared;
  requestShareImages(assets({"IMG/L0/001", "WIDE/L0/001", "SMALL/L0/001"}), [&](std::vector<UIImage> images) {
    EXPECT_TRUE(loop().isMainThread());
    shared = sizes(images);
  });
  EXPECT_FALSE(shared);
  settle();
  ASSERT_TRUE(shared);
  EXPECT_EQ(*shared, (std::vector<std::string>{"pixels:4000x3000", "pixels:300x100", "pixels:20x10"}));
}

TEST_F(AssetRequestsTest, DataThatIsNoImageLeavesNoEntryButLetsTheCompletionRun) {
  auto observed = testing::ObservedPhotoLibrary::install();
  observed->imageDataAnswer = [](const PHAssetRecord& r) -> std::optional<std::optional<Data>> {
    if (r.localIdentifier == "WIDE/L0/001") return std::optional<Data>(Data{'n', 'o', 't'});
    return std::nullopt;
  };
  std::optional<std::vector<std::string>> shared;
  requestShareImages(assets({"IMG/L0/001", "WIDE/L0/001", "SMALL/L0/001"}),
                     [&](std::vector<UIImage> images) { shared = sizes(images); });
  settle();
  ASSERT_TRUE(shared);
  EXPECT_EQ(*shared, (std::vector<std::string>{"pixels:4000x3000", "pixels:20x10"}));
}

TEST_F(AssetRequestsTest, AnAssetWithoutImageDataHoldsTheCompletionBackForGood) {
  bool completed = false;
  requestShareImages(assets({"IMG/L0/001", "NODATA/L0/001", "SMALL/L0/001"}),
                     [&](std::vector<UIImage>) { completed = true; });
  settle();
  advance(3600);
  EXPECT_FALSE(completed);
  EXPECT_EQ(loop().pendingMainCount(), 0u);
  EXPECT_EQ(loop().pendingBackgroundCount(), 0u);
}

TEST_F(AssetRequestsTest, NothingToShareCompletesEmptyOneTurnLater) {
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
