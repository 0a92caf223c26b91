#include "backends/desktop/StoredListCleaner.h"

#include <gtest/gtest.h>

#include <fstream>

#include "DesktopTestSupport.h"
#include "backends/desktop/PreferencesFile.h"
#include "platform/PlatformState.h"
#include "platform/foundation/BinaryPropertyList.h"
#include "platform/foundation/Diagnostics.h"
#include "platform/foundation/ManualRunLoop.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/mediaplayer/MediaLibrarySource.h"
#include "platform/photos/PhotoLibrarySource.h"

namespace nimbrel::desktop {
namespace {

using testing::TempFolder;

class FakePhotos : public PhotoLibrarySource {
 public:
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
  std::optional<UIImage> image(const PHAssetRecord&, CGSize, bool) const override { return std::nullopt; }
  std::optional<Data> imageData(const PHAssetRecord&) const override { return std::nullopt; }
  std::optional<std::string> fullSizeImagePath(const PHAssetRecord&) const override { return std::nullopt; }
  VideoAnswer video(const PHAssetRecord&) const override { return {}; }
};

class FakeMusic : public MediaLibrarySource {
 public:
  std::vector<std::shared_ptr<const MPMediaItemRecord>> records;
  std::vector<std::shared_ptr<const MPMediaItemRecord>> songs() const override { return records; }
  std::vector<MPMediaCollectionRecord> albums() const override { return {}; }
};

PlistValue record(const std::string& address, const std::string& kind) {
  return PlistValue(PlistValue::Dictionary{{"url", PlistValue(PlistValue::Dictionary{{"relative", address}})},
                                           {"openingDate", Date{785000000}},
                                           {"filetype", kind}});
}

Data encoded(PlistValue::Array records) { return *BinaryPropertyList::write(PlistValue(std::move(records))); }

std::vector<std::string> addresses(const Data& bytes) {
  std::vector<std::string> out;
  auto root = BinaryPropertyList::read(bytes);
  for (const auto& r : root->array()) out.push_back(r.find("url")->find("relative")->string());
  return out;
}

class StoredListCleanerTest : public ::testing::Test {
 protected:
  void SetUp() override {
    resetPlatformState();
    PhotoLibrarySource::install(photos);
    MediaLibrarySource::install(music);
    NSUserDefaults::installStandard(std::make_shared<PreferencesFile>(preferences));
    Diagnostics::listen([this](std::string_view line) { diagnostics.emplace_back(line); });
  }
  void TearDown() override {
    Diagnostics::listen(nullptr);
    resetPlatformState();
  }
  std::string file(const std::string& name) {
    std::ofstream(folder / name) << "x";
    return folder / name;
  }
  StoredListCleaner cleaner(std::vector<std::string>* forgotten = nullptr) {
    StoredListCleaner::Rules rules;
    rules.keys = {"recentFiles", "favFiles"};
    rules.decodeError = [](const Data& bytes) -> std::optional<std::string> {
      auto root = BinaryPropertyList::read(bytes);
      if (!root || !root->isArray()) return "not a list";
      return std::nullopt;
    };
    rules.forget = [forgotten](const std::vector<std::string>& gone) {
      if (forgotten) forgotten->insert(forgotten->end(), gone.begin(), gone.end());
    };
    return StoredListCleaner(preferences, rules);
  }
  PlistValue::Dictionary onDisk() { return PreferencesFile(preferences).load(); }

  ManualRunLoop loop;
  TempFolder folder;
  std::string preferences = folder / "config/preferences.plist";
  std::shared_ptr<FakePhotos> photos = std::make_shared<FakePhotos>();
  std::shared_ptr<FakeMusic> music = std::make_shared<FakeMusic>();
  std::vector<std::string> diagnostics;
};

TEST_F(StoredListCleanerTest, EntriesWhoseFileIsGoneLeaveBothListsOnDiskAndInMemory) {
  auto asset = [&](const std::string& head, std::string path) {
    auto r = std::make_shared<PHAssetRecord>();
    r->localIdentifier = head + "/L0/001";
    r->backingPath = std::move(path);
    photos->records.push_back(r);
  };
  asset("AAAAAAAA-0000-4000-8000-000000000001", file("here.jpg"));
  asset("AAAAAAAA-0000-4000-8000-000000000002", folder / "deleted-before-the-index-saw-it.jpg");
  auto song = std::make_shared<MPMediaItemRecord>();
  song->persistentID = 1311234567890123;
  song->backingPath = file("song.mp3");
  music->records.push_back(song);

  struct Row {
    std::string address, kind;
    bool stays;
  };
  const std::vector<Row> rows = {
      {"assets-library://asset/asset.JPG?id=AAAAAAAA-0000-4000-8000-000000000001&extJPG", "photo", true},
      {"assets-library://asset/asset.JPG?id=AAAAAAAA-0000-4000-8000-000000000002&extJPG", "photo", false},
      {"assets-library://asset/asset.JPG?id=BBBBBBBB-0000-4000-8000-000000000009&extJPG", "photo", false},
      {"assets-library://asset/asset.MOV?id=BBBBBBBB-0000-4000-8000-000000000009&extMOV", "video", false},
      {"ipod-library://item/item.mp3?id=1311234567890123", "music", true},
      {"ipod-library://item/item.mp3?id=999", "music", false},
      {"file://" + file("report.pdf"), "docs", true},
      {"file://" + folder / "gone.pdf", "docs", false},
      {"https://example.com/a.pdf", "docs", true},
  };
  PlistValue::Array stored;
  std::vector<std::string> staying, leaving;
  for (const auto& row : rows) {
    stored.push_back(record(row.address, row.kind));
    (row.stays ? staying : leaving).push_back(row.address);
  }
  auto& defaults = NSUserDefaults::standardUserDefaults();
  defaults.setObject(PlistValue(encoded(stored)), "recentFiles");
  defaults.setObject(PlistValue(encoded({stored[1], stored[0]})), "favFiles");
  defaults.setBool(true, "kIsListView");
  ASSERT_TRUE(defaults.synchronize());

  std::vector<std::string> forgotten;
  auto outcome = cleaner(&forgotten).clean();

  auto disk = PlistValue(onDisk());
  EXPECT_EQ(addresses(disk.find("recentFiles")->data()), staying);
  EXPECT_EQ(addresses(disk.find("favFiles")->data()), std::vector<std::string>{rows[0].address});
  EXPECT_EQ(*disk.find("kIsListView"), PlistValue(true));
  EXPECT_EQ(addresses(*defaults.dataForKey("recentFiles")), staying) << "the store in memory too";
  auto gone = leaving;
  gone.push_back(rows[1].address);
  EXPECT_EQ(outcome.removed, gone);
  EXPECT_EQ(forgotten, gone);
  EXPECT_EQ(diagnostics.size(), gone.size()) << "one line each";
  EXPECT_TRUE(outcome.keptAside.empty());

  EXPECT_TRUE(cleaner().clean().removed.empty()) << "a clean store stays as it is";
}

TEST_F(StoredListCleanerTest, AListThatDoesNotDecodeIsKeptAsideAloneAndTheOtherStays) {
  Data junk{'n', 'o', 't', ' ', 'a', ' ', 'l', 'i', 's', 't'};
  Data favourites = encoded({record("https://example.com/a.pdf", "docs")});
  auto& defaults = NSUserDefaults::standardUserDefaults();
  defaults.setObject(PlistValue(junk), "recentFiles");
  defaults.setObject(PlistValue(favourites), "favFiles");
  ASSERT_TRUE(defaults.synchronize());

  auto outcome = cleaner().clean();

  ASSERT_EQ(outcome.keptAside.rfind(preferences + ".unreadable-", 0), 0u) << outcome.keptAside;
  EXPECT_EQ(PreferencesFile(outcome.keptAside).load(), (PlistValue::Dictionary{{"recentFiles", junk}}));
  EXPECT_EQ(onDisk(), (PlistValue::Dictionary{{"favFiles", favourites}}));
  EXPECT_FALSE(defaults.dataForKey("recentFiles"));
  ASSERT_EQ(diagnostics.size(), 1u);
  EXPECT_NE(diagnostics[0].find("kept in " + outcome.keptAside), std::string::npos) << diagnostics[0];

}

}  // namespace
}  // namespace nimbrel::desktop
