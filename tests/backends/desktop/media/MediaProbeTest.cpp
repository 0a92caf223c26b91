#include "backends/desktop/media/MediaProbe.h"

#include <gtest/gtest.h>

#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "backends/desktop/DesktopTestSupport.h"
#include "backends/desktop/media/SampleMedia.h"

namespace nimbrel::desktop {
namespace {

using namespace testing;

TEST(MediaProbeTest, ReadsDateSizeOrientationAndPlaceFromExif) {
  TempFolder dir;
  std::string path = dir / "IMG_1.jpg";
  SampleExif exif{"2021:07:14 18:30:05", "+02:00", 6, 48.8584, -2.2945, "iPhone 12 front camera 2.71mm", std::nullopt};
  ASSERT_TRUE(writeSampleJpeg(path, 120, 80, exif));
  auto facts = probeImage(path);
  ASSERT_TRUE(facts);
  EXPECT_EQ(facts->kind, PHAssetMediaType::image);
  ASSERT_TRUE(facts->created);
  EXPECT_DOUBLE_EQ(*facts->created, 1626280205.0) << "18:30:05 at +02:00 is 16:30:05 UTC";
  EXPECT_EQ(facts->orientation, 6);
  EXPECT_EQ(facts->width, 80) << "a picture turned a quarter shows its height as width";
  EXPECT_EQ(facts->height, 120);
  ASSERT_TRUE(facts->latitude && facts->longitude);
  EXPECT_NEAR(*facts->latitude, 48.8584, 1e-3);
  EXPECT_NEAR(*facts->longitude, -2.2945, 1e-3) << "West is negative";
  EXPECT_TRUE(facts->selfie);
  EXPECT_FALSE(facts->panorama);
}

TEST(MediaProbeTest, ADateWithoutOffsetIsLocalTime) {
  ScopedEnv tz("TZ", "America/New_York");
  ::tzset();
  auto when = parseExifDateTime("2021:01:15 12:00:00");
  ASSERT_TRUE(when);
  EXPECT_DOUBLE_EQ(*when, 1610730000.0) << "noon in New York in January is 17:00 UTC";
  EXPECT_EQ(parseExifDateTime("2021:01:15 12:00:00", "+2474711:00"), when) << "an offset beyond a day";
  ::unsetenv("TZ");
  ::tzset();
}

TEST(MediaProbeTest, WideOrMarkedPicturesArePanoramas) {
  TempFolder dir;
  ASSERT_TRUE(writeSampleJpeg(dir / "wide.jpg", 200, 100));
  ASSERT_TRUE(writeSampleJpeg(dir / "almost.jpg", 199, 100));
  SampleExif marked;
  marked.panoramaProjection = "equirectangular";
  ASSERT_TRUE(writeSampleJpeg(dir / "marked.jpg", 100, 100, marked));
  EXPECT_TRUE(probeImage(dir / "wide.jpg")->panorama);
  EXPECT_FALSE(probeImage(dir / "almost.jpg")->panorama);
  EXPECT_TRUE(probeImage(dir / "marked.jpg")->panorama);
}

TEST(MediaProbeTest, MoviesGiveDurationSizeDateAndPlace) {
  TempFolder dir;
  std::string path = dir / "clip.mov";
  ASSERT_TRUE(writeSampleMovie(path, {96, 64, 2, "2022-03-04T05:06:07Z", "+35.6762+139.6503/"}));
  auto facts = probeVideo(path);
  ASSERT_TRUE(facts);
  EXPECT_EQ(facts->kind, PHAssetMediaType::video);
  EXPECT_NEAR(facts->duration, 2.0, 0.2);
  EXPECT_EQ(facts->width, 96);
  EXPECT_EQ(facts->height, 64);
  ASSERT_TRUE(facts->created);
  EXPECT_DOUBLE_EQ(*facts->created, 1646370367.0);
  ASSERT_TRUE(facts->latitude);
  EXPECT_NEAR(*facts->latitude, 35.6762, 1e-3);
  EXPECT_NEAR(*probeDuration(path), 2.0, 0.2);
  auto p = parseIso6709("-33.8688+151.2093+010.000/");
  ASSERT_TRUE(p);
  EXPECT_DOUBLE_EQ(p->first, -33.8688);
  EXPECT_DOUBLE_EQ(p->second, 151.2093);
  EXPECT_FALSE(parseIso6709("+91.0+010.0/")) << "both coordinates in range";
  EXPECT_FALSE(parseIso6709("garbage"));
}

TEST(MediaProbeTest, UnreadableFilesGiveNothing) {
  TempFolder dir;
  std::ofstream(dir / "broken.jpg") << "no picture here";
  EXPECT_FALSE(probeImage(dir / "broken.jpg"));
  EXPECT_FALSE(probeVideo(dir / "broken.jpg"));
  EXPECT_FALSE(probeDuration(dir / "missing.mp3"));
}

// A fuzzer's find: Exiv2 knows files by content and its QuickTime reader spun on this movie box.
TEST(MediaProbeTest, AMovieUnderAPictureNameGivesNothingAtOnce) {
  TempFolder dir;
  std::ifstream in(NIMBREL_SOURCE_DIR "/fuzz/corpus/media/regress-quicktime-box-in-a-png.bin", std::ios::binary);
  std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  ASSERT_GT(bytes.size(), 1u);
  std::ofstream(dir / "clip.png", std::ios::binary) << bytes.substr(1);  // the fuzzer's kind byte off
  EXPECT_FALSE(probeImage(dir / "clip.png"));
  SampleMovie movie;
  ASSERT_TRUE(writeSampleMovie(dir / "movie.mov", movie));
  std::filesystem::rename(dir / "movie.mov", dir / "movie.jpg");
  EXPECT_FALSE(probeImage(dir / "movie.jpg"));
}

TEST(MediaProbeTest, KindsFollowTheExtensionWhateverItsCase) {
  EXPECT_EQ(mediaFileKind("/a/IMG_1.HEIC"), MediaFileKind::image);
  EXPECT_EQ(mediaFileKind("/a/b.MoV"), MediaFileKind::video);
  EXPECT_EQ(mediaFileKind("/a/b.flac"), MediaFileKind::audio);
  EXPECT_EQ(mediaFileKind("/a.jpg/readme"), MediaFileKind::none);
  EXPECT_EQ(lowercaseExtension("/x/y.Tar.GZ"), "gz");
}

}  // namespace
}  // namespace nimbrel::desktop
