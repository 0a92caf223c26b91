#include "backends/desktop/DesktopPhotoLibrary.h"

#include <gtest/gtest.h>

#include <thread>

#include "DesktopTestSupport.h"
#include "backends/desktop/media/SampleMedia.h"
#include "platform/PlatformState.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/photos/PHAssetCollection.h"
#include "platform/photos/PHPhotoLibrary.h"
#include "platform/uikit/UIAlertController.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIStoryboard.h"
#include "platform/uikit/UIViewController.h"

namespace nimbrel::desktop {
namespace {

using namespace testing;

class DesktopPhotoLibraryTest : public ::testing::Test {
 protected:
  void SetUp() override {
    resetPlatformState();
    fs::create_directories(root / "Pictures/Holidays");
    fs::create_directories(root / "Pictures/Empty");
    fs::create_directories(root / "Videos");
    SampleExif old{"2019:05:01 10:00:00", "+00:00", 0, std::nullopt, std::nullopt, std::nullopt, std::nullopt};
    ASSERT_TRUE(writeSampleJpeg(root / "Pictures/first.jpg", 64, 48, old));
    SampleExif rome{"2020:05:01 10:00:00", "+00:00", 0, 41.9, 12.5, std::nullopt, std::nullopt};
    ASSERT_TRUE(writeSampleJpeg(root / "Pictures/Holidays/rome.jpg", 64, 48, rome));
    ASSERT_TRUE(writeSampleJpeg(root / "Pictures/Holidays/PANO_1.jpg", 300, 100));
    ASSERT_TRUE(writeSampleJpeg(root / "Pictures/my selfie.jpg", 40, 40));
    ASSERT_TRUE(writeSampleJpeg(root / "Pictures/Holidays/IMG_7.JPG", 64, 48));
    ASSERT_TRUE(writeSampleMovie(root / "Pictures/Holidays/IMG_7.MOV", {}));
    ASSERT_TRUE(writeSampleMovie(root / "Videos/clip.mp4", {}));
  }
  void TearDown() override {
    library.reset();
    resetPlatformState();
  }

  void open(bool watch = false) {
    library = std::make_shared<DesktopPhotoLibrary>(libraryOptions(root, watch));
    ASSERT_TRUE(library->waitUntilIdle(20));
    loop.runUntilIdle();
  }
  std::shared_ptr<const PHAssetRecord> named(const std::string& name) {
    for (const auto& a : library->assets()) {
      if (a->filename == name) return a;
    }
    return nullptr;
  }
  std::shared_ptr<const PHAssetCollectionRecord> collection(std::int64_t subtype, const std::string& id = "") {
    for (const auto& c : library->collections()) {
      if (id.empty() ? c->subtype == subtype : c->localIdentifier == id) return c;
    }
    return nullptr;
  }
  std::vector<std::string> names(const PHAssetCollectionRecord& c) {
    std::vector<std::string> out;
    for (const auto& id : c.assetIdentifiers) out.push_back(library->asset(id)->filename);
    return out;
  }
  void showWindow() {
    UIStoryboard::setInitialScene("Main", [] { return std::make_shared<UIViewController>(); });
    UIApplication::sharedApplication().launch(nullptr, "Main");
    loop.runUntilIdle();
  }
  std::shared_ptr<UIAlertController> alert() {
    auto window = UIApplication::sharedApplication().keyWindow();
    if (!window) return nullptr;
    return std::dynamic_pointer_cast<UIAlertController>(window->rootViewController()->presentedViewController());
  }
  struct Outcome {
    bool done = false, success = false;
    std::optional<NSError> error;
  };
  std::shared_ptr<Outcome> perform(PhotoLibrarySource::Changes changes) {
    auto outcome = std::make_shared<Outcome>();
    library->performChanges(std::move(changes), [outcome](bool ok, std::optional<NSError> error) {
      outcome->done = true;
      outcome->success = ok;
      outcome->error = std::move(error);
    });
    return outcome;
  }
  // Asks in a window, checks the question, answers Delete and waits for the files to go.
  void deleteConfirmed(PhotoLibrarySource::Changes changes, const std::string& question) {
    showWindow();
    auto outcome = perform(std::move(changes));
    loop.runUntilIdle();
    ASSERT_TRUE(alert());
    EXPECT_EQ(alert()->alertTitle(), std::optional<std::string>(question));
    alert()->pressActionWithTitle("Delete");
    ASSERT_TRUE(pumpUntil(loop, *library, [&] { return outcome->done; }));
    EXPECT_TRUE(outcome->success);
  }

  ManualRunLoop loop;
  TempFolder root;
  std::shared_ptr<DesktopPhotoLibrary> library;
};

TEST_F(DesktopPhotoLibraryTest, SixAlbumSourcesInOrderWithTheirContents) {
  open();
  std::vector<std::pair<int, std::int64_t>> kinds;
  std::vector<std::string> titles;
  for (const auto& c : library->collections()) {
    kinds.emplace_back(static_cast<int>(c->type), c->subtype);
    titles.push_back(c->title.value_or("?"));
  }
  EXPECT_EQ(kinds, (std::vector<std::pair<int, std::int64_t>>{{2, 209}, {2, 203}, {1, 2}, {1, 2}, {2, 210}, {2, 201}, {2, 202}}));
  EXPECT_EQ(titles, (std::vector<std::string>{"Recents", "Favorites", "Empty", "Holidays", "Selfies", "Panoramas", "Videos"}));
  EXPECT_EQ(names(*collection(209)).size(), 6u) << "the live photo's movie is part of its still";
  EXPECT_EQ(names(*collection(209)).front(), "first.jpg") << "oldest first";
  EXPECT_TRUE(collection(203)->assetIdentifiers.empty());
  EXPECT_EQ(names(*collection(210)), std::vector<std::string>{"my selfie.jpg"});
  EXPECT_EQ(names(*collection(201)), std::vector<std::string>{"PANO_1.jpg"});
  EXPECT_EQ(names(*collection(202)), std::vector<std::string>{"clip.mp4"});
  auto holidays = library->collections()[3];
  auto inHolidays = names(*holidays);
  std::sort(inHolidays.begin(), inHolidays.end());
  EXPECT_EQ(inHolidays, (std::vector<std::string>{"IMG_7.JPG", "PANO_1.jpg", "rome.jpg"}));

  // Through the platform's own fetch.
  PhotoLibrarySource::install(library);
  auto regular = PHAssetCollection::fetchAssetCollectionsWithType(PHAssetCollectionType::album, PHAssetCollectionSubtypeAlbumRegular, nullptr);
  EXPECT_EQ(regular.count(), 2u);
}

TEST_F(DesktopPhotoLibraryTest, AStillAndAMovieOfOneNameAreALivePhoto) {
  open();
  auto live = named("IMG_7.JPG");
  ASSERT_TRUE(live);
  EXPECT_EQ(live->mediaSubtypes & PHAssetMediaSubtypePhotoLive, PHAssetMediaSubtypePhotoLive);
  EXPECT_EQ(live->resourceCount, 2);
  EXPECT_TRUE(library->hasLivePhoto(*live));
  EXPECT_FALSE(named("IMG_7.MOV"));
  EXPECT_FALSE(library->hasLivePhoto(*named("rome.jpg")));
  fs::remove(root / "Pictures/Holidays/IMG_7.MOV");
  EXPECT_FALSE(library->hasLivePhoto(*live)) << "only while both files are there";
}

TEST_F(DesktopPhotoLibraryTest, RecordsCarryDatesPlacesSizesAndFiles) {
  open();
  auto rome = named("rome.jpg");
  ASSERT_TRUE(rome && rome->creationDate);
  EXPECT_DOUBLE_EQ(rome->creationDate->timeIntervalSince1970(), 1588327200.0);
  ASSERT_TRUE(rome->location);
  EXPECT_EQ(rome->locality, std::optional<std::string>("Rome"));
  EXPECT_EQ(rome->pixelWidth, 64);
  EXPECT_EQ(rome->backingPath, root / "Pictures/Holidays/rome.jpg");
  EXPECT_EQ(rome->fileSize, static_cast<std::int64_t>(fs::file_size(rome->backingPath)));
  auto clip = named("clip.mp4");
  ASSERT_TRUE(clip);
  EXPECT_EQ(clip->mediaType, PHAssetMediaType::video);
  auto video = library->video(*clip);
  EXPECT_EQ(video.kind, PhotoLibrarySource::VideoAnswer::Kind::url);
  EXPECT_EQ(video.path, clip->backingPath);
  EXPECT_NEAR(video.duration, 1.0, 0.15);
  EXPECT_EQ(library->fullSizeImagePath(*rome), rome->backingPath);
  EXPECT_FALSE(library->fullSizeImagePath(*clip));
  EXPECT_EQ(library->imageData(*rome)->size(), fs::file_size(rome->backingPath));
}

TEST_F(DesktopPhotoLibraryTest, IdentifiersAndFavouritesAreTheSameInTheNextRun) {
  open();
  auto before = named("rome.jpg")->localIdentifier;
  auto album = library->collections()[3]->localIdentifier;
  auto recents = collection(209)->localIdentifier;
  library->setFavorite(before, true);
  ASSERT_TRUE(pumpUntil(loop, *library, [&] { return named("rome.jpg")->favorite; }));
  EXPECT_EQ(collection(203)->assetIdentifiers, std::vector<std::string>{before});
  library.reset();
  open();
  EXPECT_EQ(named("rome.jpg")->localIdentifier, before);
  EXPECT_TRUE(named("rome.jpg")->favorite);
  EXPECT_EQ(library->collections()[3]->localIdentifier, album);
  EXPECT_EQ(collection(209)->localIdentifier, recents);
  EXPECT_EQ(library->lastScan().parsed, 0);
}

TEST_F(DesktopPhotoLibraryTest, ImagesAreThumbnailsForSmallTargetsAndTheOriginalForLargeOnes) {
  ASSERT_TRUE(writeSampleJpeg(root / "Pictures/big.jpg", 1200, 900));
  open();
  auto big = named("big.jpg");
  ASSERT_TRUE(big);
  auto small = library->image(*big, {100, 100}, true);
  ASSERT_TRUE(small && small->pixels());
  EXPECT_EQ(small->pixels()->source, library->thumbnails().thumbnailPath(big->backingPath, 256))
      << "aspect fill of 100x100 needs 134 pixels on the long side";
  EXPECT_EQ(small->pixels()->width, 256);
  auto fit = library->image(*big, {100, 100}, false);
  EXPECT_EQ(fit->pixels()->source, library->thumbnails().thumbnailPath(big->backingPath, 128));
  auto full = library->image(*big, {-1, -1}, false);
  EXPECT_EQ(full->pixels()->source, big->backingPath);
  EXPECT_EQ(full->pixels()->width, 1200);
  auto movie = library->image(*named("clip.mp4"), {2000, 2000}, false);
  ASSERT_TRUE(movie);
  EXPECT_NE(movie->pixels()->source, named("clip.mp4")->backingPath) << "a movie is drawn from a frame";
}

TEST_F(DesktopPhotoLibraryTest, ANewFileAndADeletedFileAreNoticedWithoutARestart) {
  open(true);
  ASSERT_TRUE(writeSampleJpeg(root / "Pictures/Holidays/new.jpg", 30, 30));
  ASSERT_TRUE(pumpUntil(loop, *library, [&] { return named("new.jpg") != nullptr; }));
  auto holidays = library->collections()[3];
  EXPECT_EQ(holidays->assetIdentifiers.size(), 4u);

  fs::remove(root / "Pictures/first.jpg");
  ASSERT_TRUE(pumpUntil(loop, *library, [&] { return named("first.jpg") == nullptr; }));
  fs::create_directories(root / "Pictures/Later");
  ASSERT_TRUE(pumpUntil(loop, *library, [&] { return library->collections().size() == 8; }));
}

TEST_F(DesktopPhotoLibraryTest, ANewSnapshotArrivesOnlyThroughTheMainQueue) {
  open();
  int told = 0;
  library->changed().observe([&] { ++told; });
  ASSERT_TRUE(writeSampleJpeg(root / "Pictures/late.jpg", 20, 20));
  auto seen = library->postedSnapshots();
  library->rescan();
  ASSERT_TRUE(library->waitForPost(seen, 20));
  EXPECT_FALSE(named("late.jpg")) << "not before the main queue runs";
  EXPECT_EQ(told, 0);
  loop.runUntilIdle();
  EXPECT_TRUE(named("late.jpg"));
  EXPECT_EQ(told, 1);
}

TEST_F(DesktopPhotoLibraryTest, DeletingAsksFirstAndWithoutAWindowOrWithDontAllowKeepsTheFile) {
  open();
  auto rome = named("rome.jpg");
  PhotoLibrarySource::Changes changes;
  changes.deleteAssets = {rome->localIdentifier};
  auto unasked = perform(changes);
  loop.runUntilIdle();
  EXPECT_TRUE(unasked->done) << "no window to ask in";
  EXPECT_FALSE(unasked->success);
  EXPECT_TRUE(fs::exists(rome->backingPath));
  showWindow();
  auto outcome = perform(changes);
  loop.runUntilIdle();
  auto shown = alert();
  ASSERT_TRUE(shown);
  // Its two buttons are read in desktop_library.py.
  EXPECT_EQ(shown->alertTitle(), std::optional<std::string>("Allow \u201CNimbrel\u201D to delete this photo?"));
  EXPECT_FALSE(outcome->done) << "nothing happens before the answer";
  ASSERT_TRUE(shown->pressActionWithTitle("Don't Allow"));
  loop.runUntilIdle();
  EXPECT_TRUE(outcome->done);
  EXPECT_FALSE(outcome->success);
  ASSERT_TRUE(outcome->error);
  EXPECT_EQ(outcome->error->code, 3072);
  EXPECT_TRUE(fs::exists(rome->backingPath));
  EXPECT_TRUE(named("rome.jpg"));
}

TEST_F(DesktopPhotoLibraryTest, DeleteMovesTheFilesToTheTrashAndTheLibraryForgetsThem) {
  open();
  auto live = named("IMG_7.JPG");
  auto clip = named("clip.mp4");
  ino_t still = inodeOf(live->backingPath);
  ino_t movie = inodeOf(root / "Pictures/Holidays/IMG_7.MOV");
  PhotoLibrarySource::Changes changes;
  changes.deleteAssets = {live->localIdentifier, clip->localIdentifier};
  ASSERT_NO_FATAL_FAILURE(deleteConfirmed(changes, "Allow \u201CNimbrel\u201D to delete 2 items?"));
  EXPECT_FALSE(fs::exists(live->backingPath));
  EXPECT_EQ(inodeOf(root / "data/Trash/files/IMG_7.JPG"), still);
  EXPECT_EQ(inodeOf(root / "data/Trash/files/IMG_7.MOV"), movie) << "a live photo's movie goes with it";
  EXPECT_TRUE(fs::exists(root / "data/Trash/info/clip.mp4.trashinfo"));
  EXPECT_FALSE(named("IMG_7.JPG"));
  EXPECT_FALSE(named("clip.mp4"));
}

TEST_F(DesktopPhotoLibraryTest, NewAlbumsAreFoldersAndSavedPicturesArePngsInThem) {
  open();
  PhotoLibrarySource::Changes changes;
  changes.createCollections.push_back({"NEW-ALBUM/L0/040", "Screens/2024"});
  UIImage::Pixels pixels;
  pixels.width = 4;
  pixels.height = 2;
  pixels.rgba.assign(4 * 2 * 4, 200);
  changes.createAssets.push_back({"NEW-ASSET/L0/001", UIImage::withPixels(pixels)});
  changes.addAssets.push_back({"NEW-ALBUM/L0/040", {"NEW-ASSET/L0/001"}});
  auto outcome = perform(changes);
  ASSERT_TRUE(pumpUntil(loop, *library, [&] { return outcome->done; }));
  ASSERT_TRUE(outcome->success);
  EXPECT_TRUE(fs::is_directory(root / "Pictures/Screens-2024"));
  auto created = library->asset("NEW-ASSET/L0/001");
  ASSERT_TRUE(created) << "the placeholder's identifier names the new picture";
  EXPECT_EQ(fs::path(created->backingPath).parent_path(), fs::path(root / "Pictures/Screens-2024"));
  EXPECT_EQ(fs::path(created->backingPath).extension(), ".png");
  EXPECT_EQ(created->pixelWidth, 4);
  auto album = collection(0, "NEW-ALBUM/L0/040");
  ASSERT_TRUE(album);
  EXPECT_EQ(album->title, std::optional<std::string>("Screens-2024"));
  EXPECT_EQ(album->assetIdentifiers, std::vector<std::string>{"NEW-ASSET/L0/001"});
}

TEST_F(DesktopPhotoLibraryTest, DeletingAnAlbumKeepsItsPictures) {
  open();
  auto holidays = library->collections()[3];
  auto romeId = named("rome.jpg")->localIdentifier;
  PhotoLibrarySource::Changes changes;
  changes.deleteCollections = {holidays->localIdentifier};
  ASSERT_NO_FATAL_FAILURE(deleteConfirmed(changes, "Allow \u201CNimbrel\u201D to delete the album \u201CHolidays\u201D?"));
  EXPECT_FALSE(fs::exists(root / "Pictures/Holidays"));
  EXPECT_TRUE(fs::exists(root / "data/Trash/files/Holidays")) << "the folder itself goes to the trash";
  EXPECT_TRUE(fs::exists(root / "Pictures/rome.jpg"));
  ASSERT_TRUE(named("rome.jpg"));
  EXPECT_EQ(named("rome.jpg")->localIdentifier, romeId);
  EXPECT_EQ(library->collections().size(), 6u);
}

TEST_F(DesktopPhotoLibraryTest, ThumbnailsAreMadeAheadOfScrollingWhenAsked) {
  auto options = libraryOptions(root);
  options.prefillThumbnails = 128;
  library = std::make_shared<DesktopPhotoLibrary>(options);
  ThumbnailCache other(options.thumbnails);
  std::string newest = root / "Pictures/Holidays/rome.jpg";
  // The worker makes them on its own time: wait (bounded) for the files.
  auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (!other.lookup(root / "Pictures/first.jpg", 128) && std::chrono::steady_clock::now() < deadline) {
    std::this_thread::yield();
  }
  EXPECT_TRUE(other.lookup(root / "Pictures/first.jpg", 128));
  EXPECT_TRUE(other.lookup(newest, 128));
  library.reset();
}

}  // namespace
}  // namespace nimbrel::desktop
