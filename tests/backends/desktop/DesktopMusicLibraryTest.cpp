#include "backends/desktop/DesktopMusicLibrary.h"

#include <gtest/gtest.h>

#include "DesktopTestSupport.h"
#include "backends/desktop/DesktopPlaces.h"
#include "backends/desktop/media/SampleMedia.h"
#include "platform/av/AVAsset.h"
#include "platform/av/MediaDurations.h"
#include "platform/av/MediaURL.h"
#include "platform/PlatformState.h"
#include "platform/mediaplayer/MPMediaItem.h"
#include "platform/mediaplayer/MPMediaQuery.h"

namespace nimbrel::desktop {
namespace {

using namespace testing;

class DesktopMusicLibraryTest : public ::testing::Test {
 protected:
  void SetUp() override {
    fs::create_directories(root / "Music/B");
    ASSERT_TRUE(writeSampleJpeg(root / "cover.jpg", 32, 32));
    // Seconds, title, artist, album and cover.
    ASSERT_TRUE(writeSampleSong(root / "Music/a1.mp3", {2, "Morning", "Ana", "Days", root / "cover.jpg"}));
    ASSERT_TRUE(writeSampleSong(root / "Music/a2.flac", {1, "Noon", std::nullopt, "Hours", std::nullopt}));
    ASSERT_TRUE(writeSampleSong(root / "Music/B/b1.mp3", {2, "Evening", "Ana", "Days", std::nullopt}));
    ASSERT_TRUE(writeSampleSong(root / "Music/B/untitled take.mp3", {}));
  }
  std::string index() const { return root / "cache/library.sqlite3"; }
  std::shared_ptr<const MPMediaItemRecord> titled(const DesktopMusicLibrary& lib, const std::string& title) {
    for (const auto& s : lib.songs()) {
      if (s->title == title) return s;
    }
    return nullptr;
  }

  ManualRunLoop loop;
  TempFolder root;
};

TEST_F(DesktopMusicLibraryTest, SongsCarryTheirTagsDurationSizeAndArtwork) {
  DesktopMusicLibrary library(index(), root / "Music");
  ASSERT_EQ(library.songs().size(), 4u);
  auto morning = titled(library, "Morning");
  ASSERT_TRUE(morning);
  EXPECT_EQ(morning->artist, std::optional<std::string>("Ana"));
  EXPECT_EQ(morning->albumTitle, std::optional<std::string>("Days"));
  EXPECT_NEAR(morning->playbackDuration, 2.0, 0.15);
  EXPECT_EQ(morning->fileSize, static_cast<std::int64_t>(fs::file_size(root / "Music/a1.mp3")));
  EXPECT_TRUE(morning->hasArtwork);
  EXPECT_TRUE(morning->readable);
  auto noon = titled(library, "Noon");
  ASSERT_TRUE(noon);
  EXPECT_FALSE(noon->hasArtwork);
  EXPECT_FALSE(noon->artist);
  EXPECT_NEAR(noon->playbackDuration, 1.0, 0.15);
  auto untitled = titled(library, "untitled take");
  ASSERT_TRUE(untitled) << "a song without a title tag is known by its file name";
  EXPECT_FALSE(untitled->albumTitle);
}

TEST_F(DesktopMusicLibraryTest, AlbumsFollowTheFirstAppearanceOfTheirTag) {
  DesktopMusicLibrary library(index(), root / "Music");
  auto albums = library.albums();
  ASSERT_EQ(albums.size(), 3u);
  EXPECT_EQ(albums[0].title, std::optional<std::string>("Days"));
  EXPECT_EQ(albums[0].songs.size(), 2u);
  EXPECT_EQ(albums[1].title, std::optional<std::string>("Hours"));
  EXPECT_FALSE(albums[2].title);
  EXPECT_EQ(albums[0].songs[1], titled(library, "Evening")->persistentID);
}

TEST_F(DesktopMusicLibraryTest, PersistentIdsStayAcrossRunsAndTheUrlHeadIs32Characters) {
  std::uint64_t id;
  {
    DesktopMusicLibrary first(index(), root / "Music");
    id = titled(first, "Morning")->persistentID;
  }
  DesktopMusicLibrary second(index(), root / "Music");
  auto morning = titled(second, "Morning");
  EXPECT_EQ(morning->persistentID, id);
  MPMediaItem item(morning);
  auto url = item.assetURL();
  ASSERT_TRUE(url);
  EXPECT_EQ(url->absoluteString(), "ipod-library://item/item.mp3?id=" + std::to_string(id)) << "a 32-character head";
}

TEST_F(DesktopMusicLibraryTest, ARefreshReadsOnlyWhatChanged) {
  DesktopMusicLibrary library(index(), root / "Music");
  auto report = library.refresh();
  EXPECT_EQ(report.parsed, 0);
  EXPECT_EQ(report.unchanged, 4);
  fs::remove(root / "Music/a2.flac");
  report = library.refresh();
  EXPECT_EQ(report.removed, 1);
  EXPECT_EQ(library.songs().size(), 3u);
  EXPECT_EQ(library.albums().size(), 2u);
}

TEST_F(DesktopMusicLibraryTest, ThePlatformsQueriesSeeTheSongs) {
  resetPlatformState();
  auto library = std::make_shared<DesktopMusicLibrary>(index(), root / "Music");
  MediaLibrarySource::install(library);
  MediaDurations::install(std::make_shared<DesktopMediaDurations>(library));
  auto items = MPMediaQuery::songsQuery()->items();
  ASSERT_TRUE(items);
  EXPECT_EQ(items->size(), 4u);
  // A song's address leads to its file, whose length the player and the asset read.
  auto url = items->front()->assetURL();
  ASSERT_TRUE(url);
  EXPECT_EQ(mediaFilePath(*url), items->front()->record()->backingPath);
  EXPECT_DOUBLE_EQ(AVURLAsset::assetWithURL(*url)->durationSeconds(), items->front()->playbackDuration())
      << "the index's length, not a second probe";
  EXPECT_NE(DesktopMediaDurations().durationOfFile(mediaFilePath(*url)), items->front()->playbackDuration());
  resetPlatformState();
}

}  // namespace
}  // namespace nimbrel::desktop
