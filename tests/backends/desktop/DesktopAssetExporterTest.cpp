#include "backends/desktop/DesktopAssetExporter.h"

#include <gtest/gtest.h>

extern "C" {
#include <libavformat/avformat.h>
}

#include "DesktopTestSupport.h"
#include "backends/desktop/media/SampleMedia.h"

namespace nimbrel::desktop {
namespace {

using namespace testing;

struct Read {
  std::string format, codec;
  double seconds = 0;
  int rate = 0;
};

// What libavformat finds in a file, independently of the exporter.
std::optional<Read> readBack(const std::string& path) {
  AVFormatContext* ctx = nullptr;
  if (avformat_open_input(&ctx, path.c_str(), nullptr, nullptr) < 0) return std::nullopt;
  std::optional<Read> out;
  int index = avformat_find_stream_info(ctx, nullptr) >= 0 ? av_find_best_stream(ctx, AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0) : -1;
  if (index >= 0) {
    const AVStream* st = ctx->streams[index];
    double seconds = ctx->duration > 0 ? ctx->duration / double(AV_TIME_BASE) : st->duration * av_q2d(st->time_base);
    out = Read{ctx->iformat->name, avcodec_get_name(st->codecpar->codec_id), seconds, st->codecpar->sample_rate};
  }
  avformat_close_input(&ctx);
  return out;
}

class DesktopAssetExporterTest : public ::testing::Test {
 protected:
  std::string song(const std::string& name, double seconds = 2) {
    EXPECT_TRUE(writeSampleSong(root / name, {seconds, "Tone", std::nullopt, std::nullopt, std::nullopt}));
    return root / name;
  }
  bool exportTo(const std::string& source, const std::string& target) {
    error.clear();
    return DesktopAssetExporter().exportFile(source, target, AVFileTypeCoreAudioFormat, error);
  }
  TempFolder root;
  std::string error;
};

// libavformat's muxer takes MP3 as it is; it refuses AAC, and its FLAC would not read back.
TEST_F(DesktopAssetExporterTest, CodecsTheFormatHoldsAreCopiedAndOthersDecodedToPcm) {
  struct Row {
    const char* name;
    const char* codec;
  } rows[] = {{"a.mp3", "mp3"}, {"b.m4a", "pcm_s16le"}, {"c.flac", "pcm_s16le"}, {"d.ogg", "pcm_s16le"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    std::string target = root / (std::string(row.name) + ".caf");
    ASSERT_TRUE(exportTo(song(row.name), target)) << error;
    auto read = readBack(target);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->format, "caf");
    EXPECT_EQ(read->codec, row.codec);
    EXPECT_NEAR(read->seconds, 2.0, 0.1);
    EXPECT_EQ(read->rate, 44100);
  }
}

TEST_F(DesktopAssetExporterTest, AnExistingFileStaysAndAFailureLeavesNothingBehind) {
  std::string source = song("a.mp3", 0.5);
  std::ofstream(root / "taken.caf") << "mine";
  EXPECT_FALSE(exportTo(source, root / "taken.caf"));
  EXPECT_NE(error.find("already exists"), std::string::npos) << error;
  EXPECT_EQ(readText(root / "taken.caf"), "mine");

  std::ofstream(root / "notes.txt") << "not a song";
  EXPECT_FALSE(exportTo(root / "notes.txt", root / "notes.caf"));
  EXPECT_FALSE(error.empty());
  EXPECT_FALSE(exportTo("", root / "nothing.caf"));
  EXPECT_EQ(std::distance(fs::directory_iterator(root.path()), fs::directory_iterator()), 3) << "no partial file left";
  ASSERT_TRUE(exportTo(source, root / "name: with a colon.caf")) << error;
  EXPECT_TRUE(readBack(root / "name: with a colon.caf"));
}

}  // namespace
}  // namespace nimbrel::desktop
