// The plain JPEG reader against Exiv2 on the same bytes: whenever it answers, it answers as Exiv2
// does, and it leaves to Exiv2 what it does not understand.

#include "backends/desktop/media/JpegFacts.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "backends/desktop/media/MediaProbe.h"
#include "backends/desktop/media/SampleMedia.h"

namespace nimbrel::desktop {
namespace {

namespace fs = std::filesystem;

std::string sampleBytes(const SampleExif& exif, int width = 64, int height = 48) {
  fs::path file = fs::temp_directory_path() / ("nimbrel-jpegfacts-" + std::to_string(::getpid()) + ".jpg");
  EXPECT_TRUE(writeSampleJpeg(file, width, height, exif, 3));
  std::ifstream in(file, std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(in), {}};
  fs::remove(file);
  return bytes;
}

// The plain reader's answer, finished as the probe finishes it, beside Exiv2's.
void expectSameAsExiv2(const std::string& bytes) {
  auto plain = readJpegFacts(bytes);
  ASSERT_TRUE(plain.has_value());
  MediaFacts ours = plain->facts;
  if (plain->dateOriginal) ours.created = parseExifDateTime(*plain->dateOriginal, plain->offsetOriginal.value_or(""));
  auto theirs = readJpegHeadWithExiv2(bytes);
  ASSERT_TRUE(theirs.has_value());
  EXPECT_EQ(ours.width, theirs->width);
  EXPECT_EQ(ours.height, theirs->height);
  EXPECT_EQ(ours.orientation, theirs->orientation);
  EXPECT_EQ(ours.created, theirs->created);
  EXPECT_EQ(ours.latitude, theirs->latitude);
  EXPECT_EQ(ours.longitude, theirs->longitude);
  EXPECT_EQ(ours.selfie, theirs->selfie);
  EXPECT_EQ(ours.screenshot, theirs->screenshot);
  EXPECT_EQ(ours.panorama, theirs->panorama);
}

TEST(JpegFactsTest, ReadsWhatExiv2Reads) {
  SampleExif zoned;
  zoned.dateTimeOriginal = "2023:06:12 09:14:00";
  zoned.offsetTimeOriginal = "+02:00";
  zoned.orientation = 6;
  zoned.latitude = 41.8902;
  zoned.longitude = 12.4922;
  zoned.lensModel = "iPhone 14 Front Camera 2.69mm f/1.9";
  SampleExif local;
  local.dateTimeOriginal = "2024:01:01 12:00:00";
  local.latitude = -33.8568;
  local.longitude = -151.2153;
  local.lensModel = "back camera";
  for (const SampleExif& exif : {zoned, local, SampleExif{}}) expectSameAsExiv2(sampleBytes(exif));
  const std::string large = sampleBytes(zoned, 640, 480);  // the answer's texts point into it
  auto plain = readJpegFacts(large);
  ASSERT_TRUE(plain);
  EXPECT_EQ(plain->facts.width, 640);
  EXPECT_EQ(plain->facts.orientation, 6);
  EXPECT_TRUE(plain->facts.selfie);
  EXPECT_EQ(plain->dateOriginal, "2023:06:12 09:14:00");
}

TEST(JpegFactsTest, LeavesToExiv2WhatItDoesNotRead) {
  SampleExif panorama;
  panorama.panoramaProjection = "equirectangular";
  EXPECT_FALSE(readJpegFacts(sampleBytes(panorama))) << "XMP";
  SampleExif dated;
  dated.dateTimeOriginal = "2023:06:12 09:14:00";
  std::string bytes = sampleBytes(dated);
  std::size_t data = bytes.find("\xff\xda");
  ASSERT_NE(data, std::string::npos);
  EXPECT_FALSE(readJpegFacts(std::string_view(bytes).substr(0, data))) << "a head ending before the picture data";
  EXPECT_FALSE(readJpegFacts("GIF89a")) << "not a JPEG";

  // Any single damaged byte before the picture data: the reader declines or agrees with Exiv2.
  dated.latitude = 10;
  dated.longitude = 20;
  dated.orientation = 3;
  bytes = sampleBytes(dated);
  data = bytes.find("\xff\xda");
  for (std::size_t at = 2; at < data; ++at) {
    for (char flip : {'\x01', '\x80', '\xff'}) {
      std::string damaged = bytes;
      damaged[at] = static_cast<char>(damaged[at] ^ flip);
      if (!readJpegFacts(damaged) || !readJpegHeadWithExiv2(damaged)) continue;
      SCOPED_TRACE("byte " + std::to_string(at));
      expectSameAsExiv2(damaged);
      if (HasFailure()) return;
    }
  }
}

}  // namespace
}  // namespace nimbrel::desktop
