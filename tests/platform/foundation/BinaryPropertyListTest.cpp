#include "platform/foundation/BinaryPropertyList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>

#include "PlistSamples.h"
#include "PlistTestSupport.h"
#include "platform/foundation/PropertyListDecoder.h"
#include "platform/foundation/PropertyListEncoder.h"

namespace {

using plist_test::Identical;
using plist_test::trailerOf;

PlistValue roundTrip(const PlistValue& v) {
  auto bytes = BinaryPropertyList::write(v);
  EXPECT_TRUE(bytes.ok()) << bytes.error();
  if (!bytes.ok())
    return {};
  auto back = BinaryPropertyList::read(*bytes);
  EXPECT_TRUE(back.ok()) << back.error();
  return back.ok() ? *back : PlistValue();
}

// The first object follows the header; single-value files start their root there.
Data rootBytes(const PlistValue& v) {
  auto bytes = BinaryPropertyList::write(v);
  EXPECT_TRUE(bytes.ok());
  auto t = trailerOf(*bytes);
  return Data(bytes->begin() + 8, bytes->begin() + static_cast<long>(t.tableOffset));
}

PlistValue intArray(size_t n) {
  PlistValue::Array a;
  for (size_t i = 0; i < n; ++i)
    a.emplace_back(static_cast<std::int64_t>(i * 7919));
  return a;
}

PlistValue dictOf(size_t n) {
  PlistValue::Dictionary d;
  for (size_t i = 0; i < n; ++i)
    d.emplace_back("k" + std::to_string(i), PlistValue(int(i)));
  return d;
}

TEST(BinaryPropertyListRoundTrip, ScalarsKeepTheirExactValue) {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  constexpr double kInf = std::numeric_limits<double>::infinity();
  const std::vector<PlistValue> values = {
      true, false, std::int64_t{0}, std::int64_t{1}, std::int64_t{255}, std::int64_t{256},
      std::int64_t{65535}, std::int64_t{65536}, std::int64_t{0xFFFFFFFF},
      std::int64_t{0x100000000}, std::int64_t{-1}, std::int64_t{-256},
      std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max(), 0.0,
      -0.0, 1.5, -1e-300, kNaN, -kNaN, kInf, -kInf, std::numeric_limits<double>::denorm_min(),
      std::numeric_limits<double>::max(), Date{0}, Date{-0.0}, Date{785000000.123456789},
      Date{kNaN}, Date{kInf}, Date{-kInf}, Date{-6.3e10}, Data{}, Data(14, 0xAB), Data(15, 0),
      Data(300, 0x7F), "", "a", std::string(14, 'x'), std::string(15, 'y'), std::string(16, 'z'),
      std::string(100000, 'q'), std::string("nul\0inside", 10), "Grüße aus Köln", "写真とビデオ",
      "😀🎉 astral", "mixed ascii é and 𝄞 clef",
  };
  for (const auto& v : values) {
    EXPECT_TRUE(Identical(roundTrip(v), v)) << plistTypeName(v.type());
  }
}

TEST(BinaryPropertyListRoundTrip, ContainersOfEverySizeClassNestedAndInKeyOrder) {
  for (size_t n : {0, 1, 14, 15, 16, 255, 256, 65536}) {
    EXPECT_TRUE(Identical(roundTrip(intArray(n)), intArray(n))) << n;
  }
  for (size_t n : {0, 1, 14, 15, 16, 255, 256, 1000}) {
    EXPECT_TRUE(Identical(roundTrip(dictOf(n)), dictOf(n))) << n;
  }
  PlistValue::Dictionary inner{
      {"z", 1}, {"a", PlistValue::Array{}}, {"m", PlistValue::Dictionary{}}};
  PlistValue v(PlistValue::Dictionary{
      {"zeta", PlistValue(inner)},
      {"alpha", PlistValue::Array{PlistValue(inner), "zeta", Data{1, 2, 3}, 2.5}},
      {"", "empty key"},
      {"ключ", "non-ASCII key"},
  });
  EXPECT_TRUE(Identical(roundTrip(v), v));
  auto records = plist_samples::records(10000, 7, true);
  EXPECT_TRUE(Identical(roundTrip(records), records));
}

TEST(BinaryPropertyListRoundTrip, EncoderAndDecoderUseTheBinaryForm) {
  auto v = plist_samples::records(3);
  auto bytes = PropertyListEncoder().encode(v);
  ASSERT_TRUE(bytes.ok());
  ASSERT_GE(bytes->size(), 8u);
  EXPECT_EQ(std::string(bytes->begin(), bytes->begin() + 8), "bplist00");
  auto back = PropertyListDecoder().decode(*bytes);
  ASSERT_TRUE(back.ok()) << back.error();
  EXPECT_TRUE(Identical(*back, v));
  EXPECT_FALSE(PropertyListDecoder().decode(Data{'x'}).ok());
}

// Each value in the fewest bytes its marker allows; `prefix` compares only the first bytes.
TEST(BinaryPropertyListLayout, ScalarsAndContainersTakeTheirMarkersAndTheFewestBytes) {
  Data fifteen{0x5F, 0x10, 0x0F};  // 15 characters no longer fit the marker's nibble
  fifteen.insert(fifteen.end(), 15, 'x');
  Data precise{0x33};  // the big-endian double itself, not a rounded form
  plist_test::putBE(precise, std::bit_cast<std::uint64_t>(785000000.123456789), 8);
  struct Case {
    PlistValue value;
    Data bytes;
    bool prefix = false;
  };
  const std::vector<Case> cases = {
      {0, {0x10, 0x00}},
      {255, {0x10, 0xFF}},
      {256, {0x11, 0x01, 0x00}},
      {65535, {0x11, 0xFF, 0xFF}},
      {65536, {0x12, 0x00, 0x01, 0x00, 0x00}},
      {std::int64_t{0xFFFFFFFF}, {0x12, 0xFF, 0xFF, 0xFF, 0xFF}},
      {std::int64_t{0x100000000}, {0x13, 0, 0, 0, 1, 0, 0, 0, 0}},
      {-1, {0x13, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}},
      {std::numeric_limits<std::int64_t>::min(), {0x13, 0x80, 0, 0, 0, 0, 0, 0, 0}},
      {"abc", {0x53, 'a', 'b', 'c'}},
      {"é", {0x61, 0x00, 0xE9}},
      {"😀", {0x62, 0xD8, 0x3D, 0xDE, 0x00}},
      {std::string(15, 'x'), fifteen},
      {std::string(300, 'x') + "é", {0x6F, 0x11, 0x01, 0x2D}, true},
      {true, {0x09}},
      {false, {0x08}},
      {Data{7, 8}, {0x42, 7, 8}},
      {1.0, {0x23, 0x3F, 0xF0, 0, 0, 0, 0, 0, 0}},
      {Date{785000000.123456789}, precise},
      {intArray(15), {0xAF, 0x10, 0x0F, 1}, true},
      // Keys first, then values; the dictionary is object 0, its key 1, its value 2.
      {PlistValue::Dictionary{{"k", 5}}, {0xD1, 1, 2, 0x51, 'k', 0x10, 5}},
  };
  for (const auto& c : cases) {
    Data bytes = rootBytes(c.value);
    if (c.prefix) bytes.resize(std::min(bytes.size(), c.bytes.size()));
    EXPECT_EQ(bytes, c.bytes) << plistTypeName(c.value.type());
  }
}

TEST(BinaryPropertyListLayout, EachDistinctStringIsStoredOnce) {
  PlistValue::Array items;
  for (int i = 0; i < 10000; ++i) {
    items.emplace_back(PlistValue::Dictionary{{"sharedKey", i}, {"kind", "photo"}});
  }
  auto bytes = BinaryPropertyList::write(PlistValue(items));
  ASSERT_TRUE(bytes.ok());
  // One array, 10,000 dictionaries and integers, one key string per key, one "photo".
  EXPECT_EQ(trailerOf(*bytes).objects, 1u + 10000 + 10000 + 2 + 1);
  auto occurrences = [&](std::string_view needle) {
    size_t n = 0;
    auto it = bytes->begin();
    while ((it = std::search(it, bytes->end(), needle.begin(), needle.end())) != bytes->end()) {
      ++n;
      ++it;
    }
    return n;
  };
  EXPECT_EQ(occurrences("sharedKey"), 1u);
  EXPECT_EQ(occurrences("photo"), 1u);
  auto back = BinaryPropertyList::read(*bytes);
  ASSERT_TRUE(back.ok()) << back.error();
  EXPECT_TRUE(Identical(*back, PlistValue(items)));
}

TEST(BinaryPropertyListLayout, ReferenceAndOffsetSizesAreMinimal) {
  struct Case {
    PlistValue value;
    std::uint8_t refSize, offsetSize;
    std::uint64_t objects;
  };
  // 254 integers and the array are 255 objects, still nameable with one byte, but their table
  // starts past byte 255.
  for (const Case& c : {Case{dictOf(3), 1, 1, 7}, Case{intArray(254), 1, 2, 255},
                        Case{intArray(255), 2, 2, 256}, Case{intArray(70000), 3, 3, 70001}}) {
    auto bytes = BinaryPropertyList::write(c.value);
    ASSERT_TRUE(bytes.ok());
    auto t = trailerOf(*bytes);
    EXPECT_EQ(t.refSize, c.refSize) << c.objects;
    EXPECT_EQ(t.offsetSize, c.offsetSize) << c.objects;
    EXPECT_EQ(t.objects, c.objects);
    EXPECT_EQ(t.top, 0u);
    EXPECT_EQ(t.tableOffset + c.objects * c.offsetSize + 32, bytes->size()) << c.objects;
  }
}

PlistValue nested(size_t depth) {
  PlistValue v = PlistValue::Array{};
  for (size_t i = 1; i < depth; ++i)
    v = PlistValue(PlistValue::Array{std::move(v)});
  return v;
}

TEST(BinaryPropertyListWriter, RefusesWhatCannotBeReadBackAndNestsNoDeeperThanTheReader) {
  for (std::string bad : {"\xC0\xAF", "\xED\xA0\x80", "\xE2\x82", "\xF4\x90\x80\x80", "\x80",
                          "ok\xFF", "\xF0\x9F\x98"}) {
    auto r = BinaryPropertyList::write(PlistValue(bad));
    ASSERT_FALSE(r.ok());
    EXPECT_EQ(r.error(), "string is not valid UTF-8");
    auto asKey = BinaryPropertyList::write(PlistValue(PlistValue::Dictionary{{bad, 1}}));
    EXPECT_FALSE(asKey.ok());
  }

  PlistValue::Dictionary twice{{"a", 1}, {"b", 2}, {"a", 3}};
  auto dup = BinaryPropertyList::write(PlistValue(twice));
  ASSERT_FALSE(dup.ok());
  EXPECT_EQ(dup.error(), "dictionary has the key \"a\" more than once");
  PlistValue::Dictionary many;
  for (int i = 0; i < 40; ++i)
    many.emplace_back("k" + std::to_string(i), i);
  many.emplace_back("k17", 0);
  EXPECT_FALSE(BinaryPropertyList::write(PlistValue(many)).ok());

  auto deepest = nested(BinaryPropertyList::kMaxNesting);
  EXPECT_TRUE(Identical(roundTrip(deepest), deepest));
  auto tooDeep = BinaryPropertyList::write(nested(BinaryPropertyList::kMaxNesting + 1));
  ASSERT_FALSE(tooDeep.ok());
  EXPECT_EQ(tooDeep.error(), "nesting deeper than 512 levels");
}

}  // namespace
