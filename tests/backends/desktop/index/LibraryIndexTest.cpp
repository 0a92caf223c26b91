#include "backends/desktop/index/LibraryIndex.h"
#include "backends/desktop/media/FileMediaReader.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <algorithm>
#include <map>

#include "backends/desktop/DesktopTestSupport.h"
#include "backends/desktop/media/SampleMedia.h"
#include "platform/foundation/Diagnostics.h"
#include "platform/photos/PHTypes.h"

namespace nimbrel::desktop {
namespace {

using namespace testing;

class LibraryIndexTest : public ::testing::Test {
 protected:
  void SetUp() override {
    fs::create_directories(root / "cache");
    fs::create_directories(root / "Pictures/Trips/Rome");
    fs::create_directories(root / "Videos");
    SampleExif dated{"2020:01:02 03:04:05", "+00:00", 0, std::nullopt, std::nullopt, std::nullopt, std::nullopt};
    ASSERT_TRUE(writeSampleJpeg(root / "Pictures/a.jpg", 64, 48, dated));
    ASSERT_TRUE(writeSampleJpeg(root / "Pictures/Trips/b.jpg", 48, 64));
    ASSERT_TRUE(writeSampleJpeg(root / "Pictures/Trips/Rome/c.jpg", 32, 32));
    ASSERT_TRUE(writeSampleMovie(root / "Videos/clip.mp4", {96, 64, 1, std::nullopt, std::nullopt}));
    std::ofstream(root / "Pictures/notes.txt") << "not media";
    std::ofstream(root / "Pictures/.hidden.jpg") << "hidden";
  }
  std::vector<std::string> roots() const { return {root / "Pictures", root / "Videos"}; }
  std::string indexPath() const { return root / "cache/library.sqlite3"; }
  std::map<std::string, AssetRow> byName(LibraryIndex& index) {
    std::map<std::string, AssetRow> out;
    for (auto& r : index.assets()) out[fs::path(r.path).filename().string()] = r;
    return out;
  }

  TempFolder root;
};

TEST_F(LibraryIndexTest, FirstScanReadsEveryMediaFileAndMakesAnAlbumPerFolder) {
  LibraryIndex index(indexPath(), FileMediaReader::shared());
  ASSERT_TRUE(index.ok()) << index.error();
  auto report = index.scanPhotos(roots());
  EXPECT_EQ(report.parsed, 4);
  EXPECT_EQ(report.unchanged, 0);
  EXPECT_EQ(report.images, 3);
  EXPECT_EQ(report.videos, 1);
  auto rows = byName(index);
  ASSERT_EQ(rows.size(), 4u) << "the text file and the hidden file are no media of the library";
  EXPECT_EQ(rows["a.jpg"].folder, "");
  EXPECT_EQ(rows["b.jpg"].folder, "Trips");
  EXPECT_EQ(rows["c.jpg"].folder, "Trips/Rome");
  EXPECT_EQ(rows["clip.mp4"].kind, static_cast<int>(PHAssetMediaType::video));
  EXPECT_NEAR(rows["clip.mp4"].duration, 1.0, 0.15);
  std::vector<std::string> folders;
  for (const auto& a : index.albums()) folders.push_back(a.folder);
  EXPECT_EQ(folders, (std::vector<std::string>{"Trips", "Trips/Rome"}));
  for (const auto& [name, row] : rows) EXPECT_TRUE(row.id.ends_with("/L0/001")) << row.id;
}

TEST_F(LibraryIndexTest, RescanSkipsUnchangedFilesAndRereadsChangedOnes) {
  LibraryIndex index(indexPath(), FileMediaReader::shared());
  index.scanPhotos(roots());
  auto again = index.scanPhotos(roots());
  EXPECT_EQ(again.parsed, 0) << "nothing changed, nothing is read";
  EXPECT_EQ(again.unchanged, 4);

  ASSERT_TRUE(writeSampleJpeg(root / "Pictures/a.jpg", 80, 40));  // new size, new time
  setMtime(root / "Pictures/a.jpg", 1700000000);
  ASSERT_TRUE(writeSampleJpeg(root / "Pictures/d.jpg", 20, 20));
  auto third = index.scanPhotos(roots());
  EXPECT_EQ(third.parsed, 2);
  EXPECT_EQ(third.unchanged, 3);
  EXPECT_EQ(third.updated, 1);
  EXPECT_EQ(third.added, 1);
  EXPECT_EQ(byName(index)["a.jpg"].width, 80);
}

TEST_F(LibraryIndexTest, IdentifiersStayAcrossRunsAndAcrossMovesInsideTheLibrary) {
  std::string before;
  {
    LibraryIndex index(indexPath(), FileMediaReader::shared());
    index.scanPhotos(roots());
    before = byName(index)["b.jpg"].id;
  }
  LibraryIndex reopened(indexPath(), FileMediaReader::shared());
  auto report = reopened.scanPhotos(roots());
  EXPECT_EQ(report.parsed, 0);
  EXPECT_EQ(byName(reopened)["b.jpg"].id, before);

  fs::rename(root / "Pictures/Trips/b.jpg", root / "Pictures/Trips/Rome/b.jpg");
  auto moved = reopened.scanPhotos(roots());
  EXPECT_EQ(moved.moved, 1);
  EXPECT_EQ(moved.parsed, 0) << "a move is recognised by device, inode, size and time";
  auto row = byName(reopened)["b.jpg"];
  EXPECT_EQ(row.id, before);
  EXPECT_EQ(row.folder, "Trips/Rome");
  // Smart albums have no folder to find them by: their identifiers are made once and kept.
  std::string smart = reopened.smartAlbumId(209);
  EXPECT_NE(smart, reopened.smartAlbumId(202));
  EXPECT_EQ(LibraryIndex(indexPath(), FileMediaReader::shared()).smartAlbumId(209), smart);
}

TEST_F(LibraryIndexTest, DeletedFilesAndFoldersLeaveTheIndexButAMissingRootKeepsItsOwn) {
  LibraryIndex index(indexPath(), FileMediaReader::shared());
  index.scanPhotos(roots());
  auto favourite = byName(index)["c.jpg"].id;
  index.setFavourite(favourite, true);
  fs::remove_all(root / "Pictures/Trips/Rome");
  auto report = index.scanPhotos(roots());
  EXPECT_EQ(report.removed, 1);
  EXPECT_EQ(byName(index).count("c.jpg"), 0u);
  EXPECT_EQ(index.albums().size(), 1u);
  EXPECT_FALSE(index.assetWithId(favourite));
  fs::rename(root / "Videos", root / "Unplugged");
  EXPECT_EQ(index.scanPhotos(roots()).removed, 0);
  EXPECT_EQ(byName(index).count("clip.mp4"), 1u);
}

TEST(LibraryIndexIds, PersistentIdsAreFixedFunctionsOfThePathAndPositive) {
  auto a = LibraryIndex::persistentIdForPath("/home/a/Music/x.mp3");
  EXPECT_EQ(a, LibraryIndex::persistentIdForPath("/home/a/Music/x.mp3"));
  EXPECT_NE(a, LibraryIndex::persistentIdForPath("/home/a/Music/y.mp3"));
  EXPECT_LT(a, 0x8000000000000000ull);
  auto id = LibraryIndex::newIdentifier();
  EXPECT_EQ(id.size(), 36u + 7u);
  EXPECT_EQ(id.substr(36), "/L0/001");
  EXPECT_NE(id, LibraryIndex::newIdentifier());
}

// Quick scans take folders whose times did not move as they were. The folders are back-dated after
// they are made, so that a change made by a test moves their times whatever the clock's step.
class QuickScanTest : public LibraryIndexTest {
 protected:
  void SetUp() override {
    LibraryIndexTest::SetUp();
    backdate();
    index = std::make_unique<LibraryIndex>(indexPath(), FileMediaReader::shared());
    index->setSettleSeconds(0);
    index->scanPhotos(roots());
  }
  void backdate() {
    for (auto dir : {"Pictures", "Pictures/Trips", "Pictures/Trips/Rome", "Videos"}) {
      if (fs::exists(root / dir)) setMtime(root / dir, 1600000000);
    }
  }
  ScanReport quick() { return index->scanPhotos(roots(), ScanDepth::quick); }
  std::unique_ptr<LibraryIndex> index;
};

TEST_F(QuickScanTest, UnmovedFoldersAreTakenAsTheyWereAndChangedOnesAreRead) {
  auto nothing = quick();
  EXPECT_EQ(nothing.parsed, 0);
  EXPECT_EQ(nothing.unchanged, 4);
  EXPECT_EQ(nothing.albums, 2);
  EXPECT_EQ(nothing.folders.size(), 4u) << "every folder is still watched";

  ASSERT_TRUE(writeSampleJpeg(root / "Pictures/Trips/d.jpg", 20, 20));
  auto added = quick();
  EXPECT_EQ(added.parsed, 1);
  EXPECT_EQ(added.added, 1);
  EXPECT_EQ(added.unchanged, 4);
  EXPECT_EQ(byName(*index)["d.jpg"].folder, "Trips");
}

TEST_F(QuickScanTest, AFileRewrittenInPlaceWaitsForAFullScan) {
  // Made elsewhere, then written over the old file's bytes: the folder itself is not touched.
  ASSERT_TRUE(writeSampleJpeg(root / "cache/other.jpg", 90, 30));
  std::ifstream other(root / "cache/other.jpg", std::ios::binary);
  std::ofstream(root / "Pictures/Trips/b.jpg", std::ios::binary | std::ios::trunc) << other.rdbuf();
  setMtime(root / "Pictures/Trips/b.jpg", 1700000000);
  EXPECT_EQ(quick().parsed, 0);
  EXPECT_EQ(byName(*index)["b.jpg"].width, 48);
  auto full = index->scanPhotos(roots(), ScanDepth::full);
  EXPECT_EQ(full.updated, 1);
  EXPECT_EQ(byName(*index)["b.jpg"].width, 90);
}

TEST_F(QuickScanTest, AFolderChangedInTheLastMomentsIsReadAgain) {
  // The default settling time: the folders the scan below reads were just touched.
  index->setSettleSeconds(2);
  ASSERT_TRUE(writeSampleJpeg(root / "Pictures/Trips/d.jpg", 20, 20));
  quick();
  ASSERT_TRUE(writeSampleJpeg(root / "Pictures/Trips/d.jpg", 70, 20));
  setMtime(root / "Pictures/Trips/d.jpg", 1700000000);
  auto again = quick();
  EXPECT_EQ(again.updated, 1) << "a folder read within the settling time is not taken on trust";
  EXPECT_EQ(byName(*index)["d.jpg"].width, 70);
}

TEST_F(QuickScanTest, RemovedFoldersMovesAndNewRootsAreSeen) {
  auto id = byName(*index)["b.jpg"].id;
  fs::rename(root / "Pictures/Trips/b.jpg", root / "Pictures/b.jpg");
  fs::remove_all(root / "Pictures/Trips/Rome");
  auto report = quick();
  EXPECT_EQ(report.moved, 1);
  EXPECT_EQ(report.removed, 1);
  EXPECT_EQ(byName(*index)["b.jpg"].id, id);
  EXPECT_EQ(byName(*index).count("c.jpg"), 0u);
  EXPECT_EQ(index->albums().size(), 1u);

  // Without the Videos folder among the roots, its files go even though no folder moved.
  auto narrower = index->scanPhotos({root / "Pictures"}, ScanDepth::quick);
  EXPECT_EQ(narrower.removed, 1);
  EXPECT_EQ(byName(*index).count("clip.mp4"), 0u);
}

TEST_F(LibraryIndexTest, BrokenAndHostileFilesAreSkippedWithALogLine) {
  const fs::path pictures = root / "Pictures";
  // Truncated inside its metadata, and one whose EXIF block is noise.
  ASSERT_TRUE(writeSampleJpeg(pictures / "whole.jpg", 64, 48));
  std::ofstream(pictures / "truncated.jpg", std::ios::binary) << readText(pictures / "whole.jpg").substr(0, 30);
  std::string noisy = "\xFF\xD8\xFF\xE1\x00\x40" "Exif" + std::string(2, '\0') + "II*\0\xFF\xFF\xFF\x7F";
  noisy += std::string(64 - 16, '\xEE');
  std::ofstream(pictures / "noise.jpg", std::ios::binary) << noisy;
  // Links that loop, a pipe that would block a reader, and two kinds of names.
  fs::create_symlink("self.jpg", pictures / "self.jpg");
  fs::create_directory_symlink("..", pictures / "Trips/up");
  ASSERT_EQ(::mkfifo((pictures / "pipe.jpg").c_str(), 0600), 0);
  const std::string longName = std::string(251, 'n') + ".jpg";
  ASSERT_TRUE(writeSampleJpeg(pictures / "long.jpg", 16, 16));
  fs::rename(pictures / "long.jpg", pictures / longName);
  const std::string badName = std::string("caf\xE9") + ".jpg";
  ASSERT_TRUE(writeSampleJpeg(pictures / "bad.jpg", 16, 16));
  fs::rename(pictures / "bad.jpg", pictures / badName);

  std::vector<std::string> lines;
  Diagnostics::listen([&](std::string_view line) { lines.emplace_back(line); });
  LibraryIndex index(indexPath(), FileMediaReader::shared());
  auto report = index.scanPhotos(roots());
  Diagnostics::listen(nullptr);

  auto rows = byName(index);
  EXPECT_EQ(rows.count(longName), 1u) << "a name as long as the disk allows is a name";
  EXPECT_EQ(rows.count("whole.jpg"), 1u);
  for (auto skipped : {"truncated.jpg", "noise.jpg", "self.jpg", "pipe.jpg", "caf\xE9.jpg"}) {
    EXPECT_EQ(rows.count(skipped), 0u) << skipped;
  }
  EXPECT_EQ(report.added, 6) << "a.jpg, b.jpg, c.jpg, clip.mp4, whole.jpg and the long name";
  auto logged = [&](const std::string& part) {
    return std::any_of(lines.begin(), lines.end(), [&](const auto& l) { return l.find(part) != std::string::npos; });
  };
  EXPECT_TRUE(logged("truncated.jpg: it cannot be read"));
  EXPECT_TRUE(logged("noise.jpg: it cannot be read"));
  EXPECT_TRUE(logged("self.jpg: Too many levels of symbolic links"));
  EXPECT_TRUE(logged("caf\\xE9.jpg: its name is not UTF-8"));
}

TEST_F(LibraryIndexTest, ManyFilesAreReadSideBySideAndEachKeepsItsOwnFacts) {
  fs::create_directories(root / "Pictures/Many");
  constexpr int kCount = 150;  // enough for the readers to share the work
  for (int i = 0; i < kCount; ++i) {
    SampleExif exif;
    char date[32];
    std::snprintf(date, sizeof date, "2021:%02d:%02d 10:00:00", 1 + i % 12, 1 + i % 28);
    exif.dateTimeOriginal = date;
    exif.offsetTimeOriginal = "+00:00";
    ASSERT_TRUE(writeSampleJpeg(root / ("Pictures/Many/p" + std::to_string(i) + ".jpg"), 8 + i, 8, exif));
  }
  LibraryIndex index(indexPath(), FileMediaReader::shared());
  auto report = index.scanPhotos(roots());
  EXPECT_EQ(report.added, kCount + 4);
  auto rows = byName(index);
  for (int i = 0; i < kCount; ++i) {
    const auto& row = rows["p" + std::to_string(i) + ".jpg"];
    EXPECT_EQ(row.width, 8 + i);
    std::tm tm{};
    tm.tm_year = 121;
    tm.tm_mon = i % 12;
    tm.tm_mday = 1 + i % 28;
    tm.tm_hour = 10;
    EXPECT_EQ(row.created, static_cast<double>(::timegm(&tm))) << i;
  }
}
}  // namespace
}  // namespace nimbrel::desktop
