#include "backends/sim/Fixture.h"

#include <gtest/gtest.h>

#include "backends/sim/Iso8601.h"
#include "platform/foundation/BinaryPropertyList.h"

namespace nimbrel::sim {
namespace {

TEST(Iso8601Test, ReadsUtcOffsetsFractionsAndDatesAlone) {
  EXPECT_EQ(*parseIso8601("2001-01-01T00:00:00Z"), 0.0);
  EXPECT_EQ(*parseIso8601("2026-03-01T09:30:00Z"), 794050200.0);
  EXPECT_EQ(*parseIso8601("2026-03-01T10:30:00+01:00"), 794050200.0);
  EXPECT_EQ(*parseIso8601("2026-03-01T09:30:00.25Z"), 794050200.25);
  EXPECT_EQ(*parseIso8601("2000-12-31T23:59:59Z"), -1.0);
  EXPECT_EQ(*parseIso8601("2024-02-29"), *parseIso8601("2024-02-29T00:00:00Z"));
  for (const char* bad : {"", "2026-02-30T00:00:00Z", "2026-13-01T00:00:00Z", "2026-03-01T09:30:00",
                          "2026-03-01 09:30:00Z", "2026-03-01T25:00:00Z", "yesterday", "2026-03-01T09:30:00Zjunk"}) {
    EXPECT_FALSE(parseIso8601(bad)) << bad;
  }
}

TEST(FixtureTest, BadInputGivesOneClearReason) {
  const std::pair<const char*, const char*> cases[] = {
      {"[1]", "must be a JSON object"},
      {"{", "not valid JSON"},
      {R"({"now": "soon"})", "now: \"soon\" is no ISO 8601 date"},
      {R"({"device": {"idiom": "watch"}})", "device.idiom: \"watch\" is not one of phone, pad, unspecified"},
      {R"({"permissions": {"photos": 7}})", "permissions.photos: authorisation statuses run from 0 to 4"},
      {R"({"ads": {"applovin": {"native": "ready"}}})", "ads.applovin.native"},
      {R"({"documents": [{"size": 3}]})", "documents[0]: a document needs a name"},
      {R"({"documents": [{"name": "../x"}]})", "is no file name"},
      {R"({"photos": {"assets": [{"mediaType": 1}]}})", "photos.assets[0]: an asset needs its id"},
      {R"({"photos": {"assets": [{"id": "A"}, {"id": "A"}]}})", "is used twice"},
      {R"({"photos": {"assets": [{"id": "A"}], "albums": [{"id": "L", "assets": ["B"]}]}})", "no asset \"B\""},
      {R"({"preferences": {"recentFiles": [{"url": "file:///a"}]}})", "preferences.recentFiles[0]"},
      {R"({"preferences": {"favFilesBytes": "***"}})", "preferences.favFilesBytes: not base64"},
      {R"({"preferences": {"x": null}})", "preferences.x: null cannot be stored"},
      {R"({"network": false})", "network: expected an object or null"},
      {R"({"network": {"reachable": "yes"}})", "network.reachable: expected true or false"},
      {R"({"volume": {"size": 1.28e55}})", "volume.size: expected an integer of at most 64 bits"},
      {R"({"documents": [{"name": "a", "size": 18446744073709551615}]})", "documents[0].size: expected an integer of at most 64 bits"},
  };
  for (auto [json, why] : cases) {
    auto f = Fixture::parse(json);
    ASSERT_FALSE(f.ok()) << json;
    EXPECT_NE(f.error().find(why), std::string::npos) << json << " gave: " << f.error();
  }
}

TEST(FixtureTest, TheNetworkIsReachableUnlessToldAndNullMeansNoReference) {
  struct Row {
    const char* json;
    std::optional<std::pair<bool, bool>> network;  // reachable, connection required
  };
  const Row rows[] = {
      {"{}", std::pair{true, false}},
      {R"({"network": {}})", std::pair{true, false}},
      {R"({"network": {"reachable": false}})", std::pair{false, false}},
      {R"({"network": {"connectionRequired": true}})", std::pair{true, true}},
      {R"({"network": null})", std::nullopt},
  };
  for (const auto& row : rows) {
    auto f = Fixture::parse(row.json);
    ASSERT_TRUE(f.ok()) << f.error();
    ASSERT_EQ(f->network.has_value(), row.network.has_value()) << row.json;
    if (!row.network) continue;
    EXPECT_EQ(f->network->reachable, row.network->first) << row.json;
    EXPECT_EQ(f->network->connectionRequired, row.network->second) << row.json;
  }
}

TEST(FixtureTest, RecordListsAreStoredAsTheProgramStoresThem) {
  auto f = Fixture::parse(R"({"preferences": {"isFirstTime": true, "count": 3, "ratio": 0.5,
      "recentFiles": [{"url": "file:///a", "openingDate": 785000000.25, "filetype": "docs"}],
      "favFilesBytes": "YnBsaXN0MDA="}})");
  ASSERT_TRUE(f.ok()) << f.error();
  PlistValue prefs(f->preferences);
  EXPECT_EQ(*prefs.find("isFirstTime"), PlistValue(true));
  EXPECT_TRUE(prefs.find("count")->isInteger());
  EXPECT_TRUE(prefs.find("ratio")->isReal());
  const PlistValue* recent = prefs.find("recentFiles");
  ASSERT_TRUE(recent && recent->isData());
  auto decoded = BinaryPropertyList::read(recent->data());
  ASSERT_TRUE(decoded.ok());
  const PlistValue& record = decoded->array().at(0);
  EXPECT_EQ(record.find("url")->find("relative")->string(), "file:///a");
  EXPECT_EQ(record.find("openingDate")->date().timeIntervalSinceReferenceDate, 785000000.25);
  EXPECT_EQ(prefs.find("favFiles")->data(), (Data{'b', 'p', 'l', 'i', 's', 't', '0', '0'}));
}

TEST(FixtureTest, PhotoAssetsTakeTheirDefaultsAndALibraryWithoutAlbumsGetsItsUserLibrary) {
  auto f = Fixture::parse(R"({"now": "2026-11-22T10:00:00Z", "photos": {"assets": [
      {"id": "A/L0/001"}, {"id": "B/L0/001", "mediaType": 2, "created": null, "fileSize": null}]}})");
  ASSERT_TRUE(f.ok()) << f.error();
  ASSERT_EQ(f->photoAssets.size(), 2u);
  const auto& image = f->photoAssets[0];
  EXPECT_EQ(image.record.filename, "IMG_0001.JPG");
  EXPECT_EQ(image.record.pixelWidth, 4032);
  EXPECT_EQ(image.record.fileSize, 1'000'000);
  EXPECT_EQ(image.record.creationDate, Date{f->now});
  EXPECT_EQ(image.video, "none");
  const auto& video = f->photoAssets[1];
  EXPECT_EQ(video.record.filename, "IMG_0002.MOV");
  EXPECT_FALSE(video.record.creationDate);
  EXPECT_FALSE(video.record.fileSize);
  EXPECT_EQ(video.video, "url");
  ASSERT_EQ(f->photoAlbums.size(), 1u);
  EXPECT_EQ(f->photoAlbums[0].subtype, 209);
  EXPECT_EQ(f->photoAlbums[0].assetIdentifiers, (std::vector<std::string>{"A/L0/001", "B/L0/001"}));
}

}  // namespace
}  // namespace nimbrel::sim
