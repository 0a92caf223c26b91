#include "backends/desktop/DesktopShareActivities.h"

#include <gtest/gtest.h>

#include "DesktopTestSupport.h"
#include "backends/desktop/media/ImageCodec.h"
#include "platform/PlatformState.h"
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

}  // namespace
}  // namespace nimbrel::desktop
