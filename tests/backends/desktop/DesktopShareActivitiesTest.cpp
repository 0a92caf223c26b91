#include "backends/desktop/DesktopShareActivities.h"

#include <gtest/gtest.h>

#include "DesktopTestSupport.h"
#include "backends/desktop/ImageCodec.h"
#include "platform/PlatformState.h"
#include "platform/uikit/UserNotice.h"

namespace nimbrel::desktop {
namespace {

namespace fs = std::filesystem;
using testing::TempFolder;

// The session as the activities meet it: what reached the clipboard, a chooser answered by
// the test, a portal and a file manager that answer as told.
struct FakeSurface : ShareSurface {
  std::vector<std::string> clipboardUris;
  std::string clipboardText;
  std::function<void(std::optional<std::string>)> pendingChooser;
  bool busAnswers = false;
  std::vector<std::string> busCalls;
  void putOnClipboard(const std::vector<std::string>& uris, const std::string& text) override {
    clipboardUris = uris;
    clipboardText = text;
  }
  void chooseFolder(std::function<void(std::optional<std::string>)> chosen) override { pendingChooser = chosen; }
  void openWithChooser(const std::string& uri, std::function<void(bool)> answered) override {
    busCalls.push_back("OpenFile " + uri);
    answered(busAnswers);
  }
  void showItems(const std::vector<std::string>& uris, std::function<void(bool)> answered) override {
    busCalls.push_back("ShowItems " + std::to_string(uris.size()));
    answered(busAnswers);
  }
};

class DesktopShareActivitiesTest : public ::testing::Test {
 protected:
  DesktopShareActivitiesTest() { resetPlatformState(); }
  ~DesktopShareActivitiesTest() override { resetPlatformState(); }

  DesktopShareActivities make(std::shared_ptr<ShareSurface> withSurface) {
    DesktopShareActivities::Options options;
    options.temporaryFolder = temp.path();
    options.run = [this](const std::vector<std::string>& argv) {
      std::string line;
      for (const auto& a : argv) line += (line.empty() ? "" : " ") + a;
      started.push_back(line);
      return true;
    };
    options.hasProgram = [this](const std::string& program) { return program == "xdg-email" && emailTool; };
    return DesktopShareActivities(std::move(withSurface), options);
  }
  std::string file(const std::string& folder, const std::string& name, const std::string& contents) {
    std::ofstream(folder + "/" + name) << contents;
    return folder + "/" + name;
  }
  static std::string read(const std::string& path) {
    std::ifstream in(path);
    return std::string(std::istreambuf_iterator<char>(in), {});
  }

  ManualRunLoop loop;
  TempFolder source, target, temp;
  std::shared_ptr<FakeSurface> surface = std::make_shared<FakeSurface>();
  std::vector<std::string> started;
  bool emailTool = false;
};

TEST_F(DesktopShareActivitiesTest, SaveToKeepsEveryFileThereAndReportsTheCountOnce) {
  std::vector<ShareItem> items;
  for (std::string name : {"a.jpg", "b.jpg", "c.jpg"}) {
    items.emplace_back(URL::fileURLWithPath(file(source.path(), name, "new " + name)));
    file(target.path(), name, "old " + name);
  }
  file(target.path(), "a (2).jpg", "old a2");
  auto activities = make(surface);

  ASSERT_TRUE(activities.perform(DesktopShareActivities::kSaveTo, items, std::nullopt));
  ASSERT_TRUE(surface->pendingChooser);
  surface->pendingChooser(target.path());
  loop.runUntilIdle();

  for (std::string name : {"a.jpg", "b.jpg", "c.jpg"}) EXPECT_EQ(read(target / name), "old " + name);
  EXPECT_EQ(read(target / "a (2).jpg"), "old a2");
  EXPECT_EQ(read(target / "a (3).jpg"), "new a.jpg");
  EXPECT_EQ(read(target / "b (2).jpg"), "new b.jpg");
  EXPECT_EQ(read(target / "c (2).jpg"), "new c.jpg");
  EXPECT_EQ(UserNotice::current(), std::optional<std::string>("Saved 3 items to " + target.path() + "."));

  // A cancelled chooser saves nothing and says nothing.
  UserNotice::dismiss();
  ASSERT_TRUE(activities.perform(DesktopShareActivities::kSaveTo, items, std::nullopt));
  surface->pendingChooser(std::nullopt);
  loop.runUntilIdle();
  EXPECT_EQ(UserNotice::current(), std::nullopt);
}

TEST_F(DesktopShareActivitiesTest, CopyPutsFileUrisOnTheClipboardWithPicturesWrittenAsJpegsNamedAfterTheirAsset) {
  // One picture known by the photo's shared thumbnail, one by the JPEG photo itself.
  RgbaImage red(2, 1);
  std::string thumbnail = temp / "thumb.png";
  ASSERT_TRUE(writePng(thumbnail, red, {{"Thumb::URI", "file:///photos/IMG_0007.HEIC"}}));
  std::string photo = source / "IMG_0007.JPG";
  ASSERT_TRUE(writeJpeg(photo, red));
  std::vector<ShareItem> items{URL::fileURLWithPath(file(source.path(), "My Song.m4a", "x")),
                               UIImage::withPixels({2, 1, {}, thumbnail}), UIImage::withPixels({2, 1, {}, photo})};
  ASSERT_TRUE(make(surface).perform(DesktopShareActivities::kCopy, items, std::nullopt));

  ASSERT_EQ(surface->clipboardUris.size(), 3u);
  EXPECT_EQ(surface->clipboardUris[0], "file://" + source.path() + "/My%20Song.m4a");
  std::string picture = surface->clipboardUris[1].substr(7);
  EXPECT_EQ(fs::path(picture).filename(), "IMG_0007.jpg");
  EXPECT_EQ(fs::path(picture).parent_path().parent_path(), fs::path(temp.path()));
  auto decoded = decodeJpeg(picture);
  ASSERT_TRUE(decoded);
  EXPECT_EQ(decoded->width, 2);
  std::string copy = fs::path(picture).parent_path().string() + "/IMG_0007 (2).jpg";
  EXPECT_EQ(surface->clipboardUris[2], "file://" + fs::path(picture).parent_path().string() + "/IMG_0007%20(2).jpg");
  EXPECT_EQ(read(copy), read(photo)) << "a JPEG photo is handed on as it is";
  EXPECT_EQ(surface->clipboardText, source.path() + "/My Song.m4a\n" + picture + "\n" + copy);
}

TEST_F(DesktopShareActivitiesTest, TheRowsFollowTheItemsTheSessionAndTheTools) {
  std::vector<ShareItem> text{std::string("https://example.org")};
  std::vector<ShareItem> files{URL::fileURLWithPath(file(source.path(), "a.pdf", "x"))};
  EXPECT_EQ(make(surface).names(text), std::vector<std::string>{"Copy"});
  EXPECT_EQ(make(surface).names(files), (std::vector<std::string>{"Copy", "Save to…", "Open with…", "Show in folder"}));
  emailTool = true;
  EXPECT_EQ(make(nullptr).names(files), (std::vector<std::string>{"Save to…", "Open with…", "Show in folder", "Email"}));
  EXPECT_FALSE(make(nullptr).perform("Copy", files, std::nullopt));
  EXPECT_FALSE(make(surface).perform("Email", text, std::nullopt));
}

TEST_F(DesktopShareActivitiesTest, OpenShowAndEmailFallBackToProgramsWhenTheSessionDoesNotAnswer) {
  std::string a = file(source.path(), "a b.pdf", "x"), b = file(source.path(), "c.pdf", "y");
  std::vector<ShareItem> items{URL::fileURLWithPath(a), URL::fileURLWithPath(b)};
  emailTool = true;
  auto activities = make(surface);

  surface->busAnswers = true;
  activities.perform(DesktopShareActivities::kShowInFolder, items, std::nullopt);
  activities.perform(DesktopShareActivities::kOpenWith, items, std::nullopt);
  EXPECT_TRUE(started.empty());
  EXPECT_EQ(surface->busCalls.size(), 3u);

  surface->busAnswers = false;
  activities.perform(DesktopShareActivities::kShowInFolder, items, std::nullopt);
  activities.perform(DesktopShareActivities::kOpenWith, items, std::nullopt);
  activities.perform(DesktopShareActivities::kEmail, items, std::nullopt);
  EXPECT_EQ(started, (std::vector<std::string>{
                         "xdg-open file://" + source.path(),
                         "xdg-open file://" + source.path() + "/a%20b.pdf",
                         "xdg-open file://" + source.path() + "/c.pdf",
                         "xdg-email --attach " + a + " --attach " + b,
                     }));
}

}  // namespace
}  // namespace nimbrel::desktop
