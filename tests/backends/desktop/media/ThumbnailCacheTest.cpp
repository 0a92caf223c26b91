#include "backends/desktop/media/ThumbnailCache.h"

#include <gtest/gtest.h>

#include "backends/desktop/DesktopTestSupport.h"
#include "backends/desktop/index/FileUri.h"
#include "backends/desktop/media/ImageCodec.h"
#include "backends/desktop/media/SampleMedia.h"

namespace nimbrel::desktop {
namespace {

using namespace testing;

class ThumbnailCacheTest : public ::testing::Test {
 protected:
  TempFolder dir;
  std::string cacheFolder = dir / "thumbnails";
};

TEST_F(ThumbnailCacheTest, WritesAFreedesktopThumbnailNamedByTheUrisMd5) {
  std::string original = dir / "photo one.jpg";
  ASSERT_TRUE(writeSampleJpeg(original, 600, 400));
  setMtime(original, 1600000000);
  ThumbnailCache cache(cacheFolder);
  auto thumb = cache.thumbnail(original, 128);
  ASSERT_TRUE(thumb);
  // md5("file:///.../photo%20one.jpg"): the name every other program looks for.
  EXPECT_EQ(fs::path(thumb->path).parent_path(), fs::path(cacheFolder + "/normal"));
  EXPECT_EQ(thumb->path, cache.thumbnailPath(original, 128));
  EXPECT_EQ(fs::path(thumb->path).filename().string().size(), 32u + 4u);
  EXPECT_EQ(thumb->width, 128);
  EXPECT_EQ(thumb->height, 85);
  auto info = readPngInfo(thumb->path);
  ASSERT_TRUE(info);
  EXPECT_EQ(info->width, 128);
  EXPECT_EQ(info->text["Thumb::URI"], fileUriForPath(original));
  EXPECT_EQ(info->text["Thumb::URI"].find(' '), std::string::npos);
  EXPECT_EQ(info->text["Thumb::MTime"], "1600000000");
  struct stat st;
  ASSERT_EQ(::stat(thumb->path.c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 0777, 0600u);
  ASSERT_EQ(::stat((cacheFolder + "/normal").c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 0777, 0700u);
  // The example of the thumbnail rules: file:///home/jens/photos/me.png.
  EXPECT_EQ(cache.thumbnailPath("/home/jens/photos/me.png", 256),
            cacheFolder + "/large/c6ee772d9e49320e97ec29a7eb5b1697.png");
}

TEST_F(ThumbnailCacheTest, AValidThumbnailIsReusedAndAStaleOneRemade) {
  std::string original = dir / "a.jpg";
  ASSERT_TRUE(writeSampleJpeg(original, 300, 300));
  setMtime(original, 1600000000);
  {
    ThumbnailCache first(cacheFolder);
    ASSERT_TRUE(first.thumbnail(original, 256));
    EXPECT_EQ(first.counts().made, 1);
  }
  ThumbnailCache second(cacheFolder);  // another run, or another program's thumbnail
  auto reused = second.thumbnail(original, 256);
  ASSERT_TRUE(reused);
  EXPECT_EQ(second.counts().made, 0);
  EXPECT_EQ(second.counts().reused, 1);
  ino_t before = inodeOf(reused->path);

  setMtime(original, 1600000100);
  auto remade = second.thumbnail(original, 256);
  ASSERT_TRUE(remade);
  EXPECT_EQ(second.counts().made, 1);
  EXPECT_NE(inodeOf(remade->path), before) << "replaced by rename";
  EXPECT_EQ(readPngInfo(remade->path)->text["Thumb::MTime"], "1600000100");
}

TEST_F(ThumbnailCacheTest, AThumbnailOfAnotherFileIsNotTrusted) {
  std::string original = dir / "a.jpg";
  ASSERT_TRUE(writeSampleJpeg(original, 300, 300));
  ThumbnailCache cache(cacheFolder);
  std::string path = cache.thumbnailPath(original, 128);
  fs::create_directories(fs::path(path).parent_path());
  RgbaImage blank(10, 10);
  ASSERT_TRUE(writePng(path, blank, {{"Thumb::URI", "file:///elsewhere.jpg"}, {"Thumb::MTime", "1"}}));
  EXPECT_FALSE(cache.lookup(original, 128));
  auto made = cache.thumbnail(original, 128);
  ASSERT_TRUE(made);
  EXPECT_EQ(made->width, 128);
}

TEST_F(ThumbnailCacheTest, TheOrientationIsAppliedToThePixels) {
  std::string original = dir / "turned.jpg";
  SampleExif exif;
  exif.orientation = 6;
  ASSERT_TRUE(writeSampleJpeg(original, 200, 100, exif));  // red top-left quarter as stored
  ThumbnailCache cache(cacheFolder);
  auto thumb = cache.thumbnail(original, 128, 6);
  ASSERT_TRUE(thumb);
  EXPECT_EQ(thumb->width, 64);
  EXPECT_EQ(thumb->height, 128);
  auto pixels = decodePng(thumb->path);
  ASSERT_TRUE(pixels);
  // A quarter turn clockwise brings the stored top-left to the shown top-right.
  const auto* topRight = pixels->at(pixels->width - 4, 4);
  const auto* topLeft = pixels->at(3, 4);
  EXPECT_GT(topRight[0], 180);
  EXPECT_LT(topRight[1], 80);
  EXPECT_LT(topLeft[0], 180);
}

TEST_F(ThumbnailCacheTest, MoviesGetAFrameAndBrokenFilesNothing) {
  std::string movie = dir / "clip.mp4";
  ASSERT_TRUE(writeSampleMovie(movie, {320, 240, 1, std::nullopt, std::nullopt}));
  ThumbnailCache cache(cacheFolder);
  auto thumb = cache.thumbnail(movie, 256);
  ASSERT_TRUE(thumb);
  EXPECT_EQ(thumb->width, 256);
  EXPECT_EQ(thumb->height, 192);
  std::ofstream(dir / "broken.jpg") << "nope";
  EXPECT_FALSE(cache.thumbnail(dir / "broken.jpg", 128));
  EXPECT_FALSE(cache.thumbnail(dir / "broken.jpg", 128));
  EXPECT_EQ(cache.counts().failed, 1) << "a failure is remembered, not retried on every scroll";
}

TEST(ThumbnailFlavourTest, EachSizeGoesToTheSmallestBoxThatHoldsIt) {
  EXPECT_EQ(ThumbnailCache::flavourFor(100), 128);
  EXPECT_EQ(ThumbnailCache::flavourFor(128), 128);
  EXPECT_EQ(ThumbnailCache::flavourFor(129), 256);
  EXPECT_EQ(ThumbnailCache::flavourFor(1024), 1024);
  EXPECT_FALSE(ThumbnailCache::flavourFor(1025));
  EXPECT_STREQ(ThumbnailCache::flavourFolder(512), "x-large");
}

TEST(ImageCodecTest, JpegDecodesAtTheSmallestScaleThatStillReachesTheSize) {
  TempFolder dir;
  ASSERT_TRUE(writeSampleJpeg(dir / "big.jpg", 1600, 800));
  EXPECT_EQ(decodeJpeg(dir / "big.jpg", 0)->width, 1600);
  EXPECT_EQ(decodeJpeg(dir / "big.jpg", 200)->width, 200) << "1/8";
  EXPECT_EQ(decodeJpeg(dir / "big.jpg", 201)->width, 400) << "1/4";
  EXPECT_EQ(decodeJpeg(dir / "big.jpg", 1000)->width, 1600);
}

}  // namespace
}  // namespace nimbrel::desktop
