#include "app/core/File.h"

#include <gtest/gtest.h>

#include "app/core/BasicMethod.h"
#include "platform/foundation/PropertyListEncoder.h"

namespace nimbrel {
namespace {

Data PropertyListEncoderForTest(PlistValue value) {
  return *PropertyListEncoder().encode(value);
}

File record(const std::string& url, double date, FileType kind) {
  return File{*URL::withString(url), Date{date}, kind};
}

PlistValue::Dictionary goodRecord() {
  return {{"url", PlistValue(PlistValue::Dictionary{{"relative", "file:///a/b.pdf"}})},
          {"openingDate", PlistValue(Date{785000000.25})},
          {"filetype", "docs"}};
}

TEST(FileTest, EncodesUrlAsItsRelativeStringAndKeepsTheDateToFullPrecision) {
  auto f = record("assets-library://asset/asset.JPG?id=5D1C0A3E-0000-4000-8000-000000000001&extJPG",
                  785000000.123456789, FileType::photo);
  auto bytes = encodeFiles({f});
  ASSERT_TRUE(bytes);
  auto back = decodeFiles(*bytes);
  ASSERT_TRUE(std::holds_alternative<std::vector<File>>(back));
  const auto& files = std::get<std::vector<File>>(back);
  ASSERT_EQ(files.size(), 1u);
  EXPECT_EQ(files[0].url.absoluteString(),
            "assets-library://asset/asset.JPG?id=5D1C0A3E-0000-4000-8000-000000000001&extJPG");
  EXPECT_EQ(files[0].openingDate.timeIntervalSinceReferenceDate, 785000000.123456789);
  EXPECT_EQ(files[0].filetype, FileType::photo);

  PlistValue encoded = f.encode();
  ASSERT_TRUE(encoded.find("url") && encoded.find("url")->find("relative"));
  EXPECT_EQ(encoded.find("url")->find("relative")->string(), f.url.absoluteString());
  EXPECT_FALSE(encoded.find("url")->find("base"));
}

TEST(FileTest, DecodingIsStrictAboutKeysTypesAndKindsAndResolvesABase) {
  struct Case {
    const char* what;
    std::function<void(PlistValue&)> damage;
    DecodingError::Kind kind;
  };
  const Case cases[] = {
      {"missing url", [](PlistValue& v) { v.erase("url"); }, DecodingError::Kind::keyNotFound},
      {"missing date", [](PlistValue& v) { v.erase("openingDate"); }, DecodingError::Kind::keyNotFound},
      {"missing kind", [](PlistValue& v) { v.erase("filetype"); }, DecodingError::Kind::keyNotFound},
      {"date as a number", [](PlistValue& v) { v.set("openingDate", 785000000.0); }, DecodingError::Kind::typeMismatch},
      {"url as a string", [](PlistValue& v) { v.set("url", "file:///a"); }, DecodingError::Kind::typeMismatch},
      {"unknown kind", [](PlistValue& v) { v.set("filetype", "audio"); }, DecodingError::Kind::dataCorrupted},
      {"kind in capitals", [](PlistValue& v) { v.set("filetype", "Docs"); }, DecodingError::Kind::dataCorrupted},
      {"url that is no URL",
       [](PlistValue& v) { v.set("url", PlistValue(PlistValue::Dictionary{{"relative", "a b"}})); },
       DecodingError::Kind::dataCorrupted},
      {"url without its string", [](PlistValue& v) { v.set("url", PlistValue(PlistValue::Dictionary{})); },
       DecodingError::Kind::keyNotFound},
  };
  for (const auto& c : cases) {
    PlistValue v(goodRecord());
    c.damage(v);
    auto result = File::decode(v);
    ASSERT_TRUE(std::holds_alternative<DecodingError>(result)) << c.what;
    EXPECT_EQ(std::get<DecodingError>(result).kind, c.kind) << c.what;
  }
  PlistValue withExtra(goodRecord());
  withExtra.set("comment", "ignored");
  EXPECT_TRUE(std::holds_alternative<File>(File::decode(withExtra))) << "unknown keys are ignored";
  PlistValue based(goodRecord());
  based.set("url", PlistValue(PlistValue::Dictionary{
                       {"relative", "report.pdf"},
                       {"base", PlistValue(PlistValue::Dictionary{{"relative", "file:///home/u/Documents/"}})}}));
  auto resolved = File::decode(based);
  ASSERT_TRUE(std::holds_alternative<File>(resolved));
  EXPECT_EQ(std::get<File>(resolved).url.absoluteString(), "file:///home/u/Documents/report.pdf") << "a base is resolved";
}

TEST(FileTest, OneBadRecordOrARootThatIsNoArrayOrNoPropertyListFailsTheWholeList) {
  PlistValue::Array list{PlistValue(goodRecord()), PlistValue(goodRecord())};
  list[1].set("filetype", "song");
  auto bytes = PropertyListEncoderForTest(PlistValue(list));
  auto result = decodeFiles(bytes);
  ASSERT_TRUE(std::holds_alternative<DecodingError>(result));
  EXPECT_EQ(std::get<DecodingError>(result).localizedDescription(),
            "The data couldn\u2019t be read because it isn\u2019t in the correct format.");
  EXPECT_TRUE(std::holds_alternative<DecodingError>(decodeFiles(PropertyListEncoderForTest(PlistValue(goodRecord())))));
  EXPECT_TRUE(std::holds_alternative<DecodingError>(decodeFiles(Data{'b', 'p', 'l', 'i', 's', 't'})));
  EXPECT_TRUE(std::holds_alternative<DecodingError>(decodeFiles(Data{})));
}

TEST(FileTest, AssetAddressesTakeTheIdentifierUpToItsFirstSlash) {
  EXPECT_EQ(assetAddress("5D1C0A3E-0000-4000-8000-000000000001/L0/001", FileType::photo),
            "assets-library://asset/asset.JPG?id=5D1C0A3E-0000-4000-8000-000000000001&extJPG");
  EXPECT_EQ(assetAddress("ABC/L0/001", FileType::video), "assets-library://asset/asset.MOV?id=ABC&extMOV");
  EXPECT_EQ(assetAddress("NOSLASH", FileType::photo), "assets-library://asset/asset.JPG?id=NOSLASH&extJPG");
}

}  // namespace
}  // namespace nimbrel
