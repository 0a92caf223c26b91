#include "backends/desktop/DesktopImageDecoder.h"

#include <gtest/gtest.h>

#include "DesktopTestSupport.h"
#include "backends/desktop/media/AudioTags.h"
#include "backends/desktop/media/ImageCodec.h"
#include "backends/desktop/media/SampleMedia.h"

namespace nimbrel::desktop {
namespace {

using namespace testing;

bool reddish(const std::vector<std::uint8_t>& rgba, int width, int x, int y) {
  const std::uint8_t* p = rgba.data() + (static_cast<size_t>(y) * width + x) * 4;
  return p[0] > 180 && p[1] < 80 && p[2] < 80;
}

UIImage::Pixels picture(const std::string& source, int width, int height) { return {width, height, {}, source}; }

// The one copy the decoder keeps in its cache folder.
std::string keptCover(const std::string& folder) {
  std::vector<fs::path> kept(fs::directory_iterator(folder), fs::directory_iterator{});
  EXPECT_EQ(kept.size(), 1u);
  return kept.empty() ? "" : kept.front().string();
}

// The sample cover is 64 × 32 with a red top-left quarter: filling a square keeps its middle, so
// the red shows in the top-left quarter of the result and nowhere on the right.
TEST(DesktopImageDecoderTest, EmbeddedCoversOfEachFormatFillTheBoxAroundTheirCentre) {
  TempFolder root;
  ASSERT_TRUE(writeSampleJpeg(root / "cover.jpg", 64, 32));
  SampleSong song{0.5, std::nullopt, std::nullopt, std::nullopt, root / "cover.jpg"};
  DesktopImageDecoder decoder;
  for (const char* name : {"a.mp3", "b.flac", "c.m4a"}) {
    SCOPED_TRACE(name);
    ASSERT_TRUE(writeSampleSong(root / name, song));
    auto rgba = decoder.decode(picture(root / name + "#artwork", 20, 20));
    ASSERT_TRUE(rgba);
    ASSERT_EQ(rgba->size(), 20u * 20 * 4);
    EXPECT_TRUE(reddish(*rgba, 20, 2, 2));
    EXPECT_FALSE(reddish(*rgba, 20, 17, 2));
    EXPECT_FALSE(reddish(*rgba, 20, 2, 17));
  }
  song.artworkJpeg.reset();
  ASSERT_TRUE(writeSampleSong(root / "bare.mp3", song));
  EXPECT_FALSE(decoder.decode(picture(root / "bare.mp3#artwork", 20, 20))) << "a song without a cover";
  EXPECT_FALSE(decoder.decode(picture(root / "gone.mp3#artwork", 20, 20)));
  EXPECT_FALSE(AudioTags::artworkData(root / "cover.jpg"));
}

TEST(DesktopImageDecoderTest, ACoverIsReadOnceIntoTheCacheUntilTheSongChanges) {
  TempFolder root;
  ASSERT_TRUE(writeSampleJpeg(root / "cover.jpg", 2400, 1200));
  SampleSong song{0.5, std::nullopt, std::nullopt, std::nullopt, root / "cover.jpg"};
  ASSERT_TRUE(writeSampleSong(root / "a.mp3", song));
  DesktopImageDecoder decoder(root / "covers");
  auto first = decoder.decode(picture(root / "a.mp3#artwork", 40, 40));
  ASSERT_TRUE(first);
  EXPECT_TRUE(reddish(*first, 40, 4, 4));

  // What the cache holds is what shows, until the song's file changes.
  ASSERT_TRUE(writeJpeg(keptCover(root / "covers"), RgbaImage(1024, 512)));
  EXPECT_FALSE(reddish(*decoder.decode(picture(root / "a.mp3#artwork", 40, 40)), 40, 4, 4));
  ASSERT_TRUE(writeSampleSong(root / "a.mp3", song));
  EXPECT_TRUE(reddish(*decoder.decode(picture(root / "a.mp3#artwork", 40, 40)), 40, 4, 4));

  // A scan makes the copy ahead of any showing, and leaves one that is there alone.
  fs::remove_all(root / "covers");
  decoder.prepareCover(root / "a.mp3");
  ASSERT_TRUE(writeJpeg(keptCover(root / "covers"), RgbaImage(1024, 512)));
  decoder.prepareCover(root / "a.mp3");
  EXPECT_FALSE(reddish(*decoder.decode(picture(root / "a.mp3#artwork", 40, 40)), 40, 4, 4));
}

TEST(DesktopImageDecoderTest, PictureFilesShowAsTurnedAndDecodeNoLargerThanTheBoxNeeds) {
  TempFolder root;
  SampleExif exif;
  exif.orientation = 6;  // stored on its side: shown turned a quarter clockwise
  ASSERT_TRUE(writeSampleJpeg(root / "turned.jpg", 40, 20, exif));
  auto rgba = DesktopImageDecoder().decode(picture(root / "turned.jpg", 20, 40));
  ASSERT_TRUE(rgba);
  EXPECT_TRUE(reddish(*rgba, 20, 17, 2)) << "the red corner turns to the top right";
  EXPECT_FALSE(reddish(*rgba, 20, 2, 2));

  ASSERT_TRUE(writeSampleJpeg(root / "big.jpg", 800, 800));
  auto covering = decodeJpegCovering(root / "big.jpg", 100, 150);
  ASSERT_TRUE(covering);
  EXPECT_EQ(covering->width, 200) << "a quarter is the smallest scale still 150 high";
  EXPECT_FALSE(DesktopImageDecoder().decode(picture(root / "big.jpg", 0, 10)));
}

}  // namespace
}  // namespace nimbrel::desktop
