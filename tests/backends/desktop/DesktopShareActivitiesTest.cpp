#include "backends/desktop/DesktopShareActivities.h"

#include <gtest/gtest.h>

#include "DesktopTestSupport.h"
#include "backends/desktop/media/ImageCodec.h"
#include "platform/PlatformState.h"
#include "platform/mediaplayer/MediaLibrarySource.h"
#include "platform/photos/PhotoLibrarySource.h"
#include "platform/uikit/UserNotice.h"

namespace nimbrel::desktop {
namespace {

namespace fs = std::filesystem;
using testing::readText;

// The session as the activities meet it: a chooser the test answers, a bus that answers as told.
struct FakeSurface : ShareSurface {
  std::vector<std::string> uris;
  std::string text;
  std::function<void(std::optional<std::string>)> chooser;
  bool busAnswers = false;
  void putOnClipboard(const std::vector<std::string>& u, const std::string& t) override { uris = u, text = t; }
  void chooseFolder(std::function<void(std::optional<std::string>)> chosen) override { chooser = chosen; }
  void openWithChooser(const std::string&, std::function<void(bool)> answered) override { answered(busAnswers); }
  void showItems(const std::vector<std::string>&, std::function<void(bool)> answered) override { answered(busAnswers); }
};

class DesktopShareActivitiesTest : public ::testing::Test {
 protected:
  DesktopShareActivitiesTest() { resetPlatformState(); }
  ~DesktopShareActivitiesTest() override { resetPlatformState(); }
  DesktopShareActivities make(std::shared_ptr<ShareSurface> withSurface) {
    auto run = [this](const std::vector<std::string>& argv) { return started.push_back(argv), true; };
    auto has = [this](const std::string& program) { return program == "xdg-email" && emailTool; };
    return DesktopShareActivities(std::move(withSurface), {temp.path(), run, has});
  }
  static std::string file(const std::string& folder, const std::string& name, const std::string& contents) {
    std::ofstream(folder + "/" + name) << contents;
    return folder + "/" + name;
  }

  ManualRunLoop loop;
  testing::TempFolder source, target, temp;
  std::shared_ptr<FakeSurface> surface = std::make_shared<FakeSurface>();
  std::vector<std::vector<std::string>> started;
  bool emailTool = false;
};

TEST_F(DesktopShareActivitiesTest, SaveToKeepsEveryFileThereAndReportsTheCountOnce) {
  std::vector<ShareItem> items;
  for (std::string name : {"a.jpg", "b.jpg"}) {
    items.emplace_back(URL::fileURLWithPath(file(source.path(), name, "new " + name)));
    file(target.path(), name, "old " + name);
  }
  file(target.path(), "a (2).jpg", "old a2");
  auto activities = make(surface);
  ASSERT_TRUE(activities.perform(DesktopShareActivities::kSaveTo, items, std::nullopt));
  surface->chooser(target.path());
  loop.runUntilIdle();
  EXPECT_EQ(readText(target / "a.jpg") + readText(target / "a (2).jpg") + readText(target / "b.jpg"),
            "old a.jpgold a2old b.jpg");
  EXPECT_EQ(readText(target / "a (3).jpg") + readText(target / "b (2).jpg"), "new a.jpgnew b.jpg");
  EXPECT_EQ(UserNotice::current(), std::optional<std::string>("Saved 2 items to " + target.path() + "."));

  UserNotice::dismiss();
  ASSERT_TRUE(activities.perform(DesktopShareActivities::kSaveTo, items, std::nullopt));
  surface->chooser(std::nullopt);
  loop.runUntilIdle();
  EXPECT_EQ(UserNotice::current(), std::nullopt) << "a cancelled chooser saves nothing and says nothing";
}

TEST_F(DesktopShareActivitiesTest, CopyGivesFileUrisWithPicturesWrittenAsJpegsNamedAfterTheirPhoto) {
  RgbaImage red(2, 1);
  std::string thumbnail = temp / "thumb.png", photo = source / "IMG_7.JPG";
  ASSERT_TRUE(writePng(thumbnail, red, {{"Thumb::URI", "file:///photos/IMG_7.HEIC"}}));
  ASSERT_TRUE(writeJpeg(photo, red));
  std::vector<ShareItem> items{URL::fileURLWithPath(file(source.path(), "My Song.m4a", "x")),
                               UIImage::withPixels({2, 1, {}, thumbnail}), UIImage::withPixels({2, 1, {}, photo})};
  ASSERT_TRUE(make(surface).perform(DesktopShareActivities::kCopy, items, std::nullopt));

  ASSERT_EQ(surface->uris.size(), 3u);
  EXPECT_EQ(surface->uris[0], "file://" + source.path() + "/My%20Song.m4a");
  std::string decoded = surface->uris[1].substr(7), folder = fs::path(decoded).parent_path();
  EXPECT_EQ(decoded, folder + "/IMG_7.jpg");
  EXPECT_TRUE(decodeJpeg(decoded));
  EXPECT_EQ(surface->uris[2], "file://" + folder + "/IMG_7%20(2).jpg");
  EXPECT_EQ(readText(folder + "/IMG_7 (2).jpg"), readText(photo)) << "a JPEG photo is handed on as it is";
  EXPECT_EQ(surface->text, source.path() + "/My Song.m4a\n" + decoded + "\n" + folder + "/IMG_7 (2).jpg");
}

TEST_F(DesktopShareActivitiesTest, TheRowsFollowTheItemsAndToolsAndTheSessionFallsBackToPrograms) {
  std::vector<ShareItem> text{std::string("https://example.org")};
  std::string a = file(source.path(), "a b.pdf", "x"), b = file(source.path(), "c.pdf", "y");
  std::vector<ShareItem> files{URL::fileURLWithPath(a), URL::fileURLWithPath(b)};
  EXPECT_EQ(make(surface).names(text), std::vector<std::string>{"Copy"});
  EXPECT_EQ(make(surface).names(files), (std::vector<std::string>{"Copy", "Save to…", "Open with…", "Show in folder"}));
  emailTool = true;
  EXPECT_EQ(make(nullptr).names(files), (std::vector<std::string>{"Save to…", "Open with…", "Show in folder", "Email"}));

  auto activities = make(surface);
  surface->busAnswers = true;
  activities.perform(DesktopShareActivities::kShowInFolder, files, std::nullopt);
  activities.perform(DesktopShareActivities::kOpenWith, files, std::nullopt);
  EXPECT_TRUE(started.empty());
  surface->busAnswers = false;
  activities.perform(DesktopShareActivities::kShowInFolder, files, std::nullopt);
  activities.perform(DesktopShareActivities::kOpenWith, files, std::nullopt);
  activities.perform(DesktopShareActivities::kEmail, files, std::nullopt);
  std::string uri = "file://" + source.path();
  EXPECT_EQ(started, (decltype(started){{"xdg-open", uri}, {"xdg-open", uri + "/a%20b.pdf"}, {"xdg-open", uri + "/c.pdf"},
                                        {"xdg-email", "--attach", a, "--attach", b}}));
}

// A library as the platform answers for it: files where the records have them, pixels where not.
struct FakePhotos : PhotoLibrarySource {
  std::vector<std::shared_ptr<const PHAssetRecord>> records;
  std::vector<std::shared_ptr<const PHAssetCollectionRecord>> collections() const override { return {}; }
  std::vector<std::shared_ptr<const PHAssetRecord>> assets() const override { return records; }
  std::shared_ptr<const PHAssetRecord> asset(const std::string& id) const override {
    for (const auto& r : records) {
      if (r->localIdentifier == id) return r;
    }
    return nullptr;
  }
  void performChanges(Changes, std::function<void(bool, std::optional<NSError>)>) override {}
  std::optional<UIImage> image(const PHAssetRecord& a, CGSize, bool) const override {
    if (!a.backingPath.empty()) return std::nullopt;
    return UIImage::withPixels({2, 1, std::vector<std::uint8_t>(8, 200), "/gone/" + a.filename});
  }
  std::optional<Data> imageData(const PHAssetRecord&) const override { return std::nullopt; }
  std::optional<std::string> fullSizeImagePath(const PHAssetRecord& a) const override {
    if (a.mediaType != PHAssetMediaType::image || a.backingPath.empty()) return std::nullopt;
    return a.backingPath;
  }
  VideoAnswer video(const PHAssetRecord& a) const override {
    return {VideoAnswer::Kind::url, a.mediaType == PHAssetMediaType::video ? a.backingPath : "", 1};
  }
};

struct FakeSongs : MediaLibrarySource {
  std::vector<std::shared_ptr<const MPMediaItemRecord>> records;
  std::vector<std::shared_ptr<const MPMediaItemRecord>> songs() const override { return records; }
  std::vector<MPMediaCollectionRecord> albums() const override { return {}; }
};

TEST_F(DesktopShareActivitiesTest, ADragCarriesTheFileBehindEachKindOfItem) {
  auto photos = std::make_shared<FakePhotos>();
  auto record = [&](const std::string& id, PHAssetMediaType type, const std::string& name, std::string path) {
    auto r = std::make_shared<PHAssetRecord>();
    r->localIdentifier = id, r->mediaType = type, r->filename = name, r->backingPath = std::move(path);
    r->pixelWidth = 2, r->pixelHeight = 1;
    photos->records.push_back(r);
  };
  std::string photo = file(source.path(), "IMG_1.JPG", "p"), clip = file(source.path(), "clip.mp4", "v");
  record("P1/L0/001", PHAssetMediaType::image, "IMG_1.JPG", photo);
  record("V1/L0/001", PHAssetMediaType::video, "clip.mp4", clip);
  record("G1/L0/001", PHAssetMediaType::image, "IMG_9.HEIC", source / "IMG_9.HEIC");  // the file went
  record("X1/L0/001", PHAssetMediaType::image, "IMG_3.HEIC", "");                      // pixels only
  PhotoLibrarySource::install(photos);
  auto songs = std::make_shared<FakeSongs>();
  auto song = std::make_shared<MPMediaItemRecord>();
  song->persistentID = 7, song->backingPath = file(source.path(), "7.m4a", "s");
  songs->records.push_back(song);
  MediaLibrarySource::install(songs);
  std::string document = file(source.path(), "my notes.txt", "d");

  auto activities = make(surface);
  // "*name": a JPEG of that name written in a folder of the drag's own, as Copy writes pictures.
  struct Case {
    const char* what;
    ShareItem item;
    std::string file;
  };
  const Case cases[] = {
      {"a document", URL::fileURLWithPath(document), document},
      {"a document that went", URL::fileURLWithPath(source / "gone.txt"), ""},
      {"a song", *URL::withString("ipod-library://item/item.m4a?id=7"), song->backingPath},
      {"a song not in the library", *URL::withString("ipod-library://item/item.m4a?id=8"), ""},
      {"a photo", *URL::withString("assets-library://asset/asset.JPG?id=P1&extJPG"), photo},
      {"a video", *URL::withString("assets-library://asset/asset.MOV?id=V1&extMOV"), clip},
      {"a photo whose file went", *URL::withString("assets-library://asset/asset.JPG?id=G1&extJPG"), ""},
      {"a photo not in the library", *URL::withString("assets-library://asset/asset.JPG?id=Z9&extJPG"), ""},
      {"a photo held only as pixels", *URL::withString("assets-library://asset/asset.JPG?id=X1&extJPG"), "*IMG_3.jpg"},
      {"a picture handed over as pixels", UIImage::withPixels({2, 1, std::vector<std::uint8_t>(8, 9), photo}), "*IMG_1.jpg"},
      {"text", std::string("hello"), ""},
      {"a web address", *URL::withString("https://example.org/a.jpg"), ""},
  };
  for (const auto& c : cases) {
    auto files = activities.filesBehind({c.item});
    if (c.file.empty()) {
      EXPECT_TRUE(files.empty()) << c.what;
    } else if (c.file[0] != '*') {
      EXPECT_EQ(files, std::vector<std::string>{c.file}) << c.what;
    } else {
      ASSERT_EQ(files.size(), 1u) << c.what;
      EXPECT_EQ(fs::path(files[0]).parent_path().parent_path(), fs::path(temp.path())) << c.what;
      EXPECT_EQ(fs::path(files[0]).filename(), fs::path(c.file.substr(1))) << c.what;
      EXPECT_TRUE(decodeJpeg(files[0])) << c.what;
    }
  }
}

TEST_F(DesktopShareActivitiesTest, ADragHandsOverWhatCopyPutsOnTheClipboard) {
  std::vector<ShareItem> items{URL::fileURLWithPath(file(source.path(), "a b.pdf", "x")),
                               URL::fileURLWithPath(file(source.path(), "c.pdf", "y"))};
  auto activities = make(surface);
  ASSERT_TRUE(activities.perform(DesktopShareActivities::kCopy, items, std::nullopt));
  auto dragged = activities.dragFiles(items);
  EXPECT_EQ(dragged.uris, surface->uris);
  EXPECT_EQ(dragged.text, surface->text);
  EXPECT_EQ(dragged.uris[0], "file://" + source.path() + "/a%20b.pdf");
  EXPECT_TRUE(activities.dragFiles({std::string("only text")}).uris.empty());
}

}  // namespace
}  // namespace nimbrel::desktop
