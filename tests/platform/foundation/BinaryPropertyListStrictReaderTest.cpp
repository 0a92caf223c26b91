#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "PlistSamples.h"
#include "PlistTestSupport.h"
#include "platform/foundation/BinaryPropertyList.h"

namespace {

using plist_test::Identical;
using plist_test::RawPlist;

Data bytesOf(std::string_view s) {
  return Data(s.begin(), s.end());
}

// A file of these objects, the first at the top, with 1-byte references and offsets.
Data file(std::vector<Data> objects) {
  return RawPlist{std::move(objects)}.build();
}
Data one(Data object) {
  return file({std::move(object)});
}

// [5] as array object 0 and integer object 1.
Data small() {
  return file({{0xA1, 1}, {0x10, 5}});
}

// Trailer fields, by their distance from the end of the file.
constexpr size_t kOffsetSize = 26, kRefSize = 25, kCount = 24, kTop = 16, kTable = 8;

// The trailer field at `fromEnd` bytes before the end, replaced.
Data patched(size_t fromEnd, std::uint64_t value, int width, Data file = small()) {
  size_t pos = file.size() - fromEnd;
  for (int i = width - 1; i >= 0; --i)
    file[pos++] = static_cast<std::uint8_t>(value >> (8 * i));
  return file;
}

Data withHeader(std::string_view header) {
  Data f = small();
  std::copy(header.begin(), header.end(), f.begin());
  return f;
}

Data chain(size_t depth) {
  RawPlist p;
  p.refSize = 2;
  p.offsetSize = 2;
  for (size_t i = 0; i + 1 < depth; ++i) {
    p.objects.push_back(
        {0xA1, static_cast<std::uint8_t>((i + 1) >> 8), static_cast<std::uint8_t>(i + 1)});
  }
  p.objects.push_back({0xA0});
  return p.build();
}

struct Case {
  const char* name;
  Data file;
  std::string error;
};

std::vector<Case> brokenFiles() {
  std::vector<Case> cases = {
      {"empty", {}, "truncated header"},
      {"short header", bytesOf("bplist"), "truncated header"},
      {"other format", withHeader("<?xml ve"), "not a binary property list"},
      {"other version", withHeader("bplist01"), "unsupported format version \"01\""},
      {"no room for a trailer", bytesOf("bplist00 and then twenty-odd"), "truncated trailer"},
      {"offset size 0", patched(kOffsetSize, 0, 1), "bad offset size 0 in trailer"},
      {"offset size 9", patched(kOffsetSize, 9, 1), "bad offset size 9 in trailer"},
      {"ref size 0", patched(kRefSize, 0, 1), "bad object reference size 0 in trailer"},
      {"ref size 9", patched(kRefSize, 9, 1), "bad object reference size 9 in trailer"},
      {"no objects", patched(kCount, 0, 8), "trailer claims no objects"},
      {"top out of range", patched(kTop, 2, 8), "top object 2 out of range of 2 objects"},
      {"table in header", patched(kTable, 8, 8), "offset table at 8 is outside the file"},
      {"table past end", patched(kTable, 1u << 20, 8),
       "offset table at 1048576 is outside the file"},
      {"table past end, wrapping", patched(kTable, ~0ull, 8),
       "offset table at 18446744073709551615 is outside the file"},
      {"table longer than file", patched(kCount, 3, 8),
       "offset table of 3 entries runs past the trailer"},
      {"huge object count", patched(kRefSize, 8, 1, patched(kCount, 1ull << 62, 8)),
       "offset table of 4611686018427387904 entries runs past the trailer"},
      {"count beyond reference size", RawPlist{std::vector<Data>(300, Data{0x10, 0}), 1, 2}.build(),
       "300 objects cannot be named with 1-byte references"},
      {"self reference", file({{0xA1, 0}}), "object 0 refers to itself"},
      {"dictionary value is itself", file({{0xD1, 1, 0}, {0x51, 'k'}}),
       "object 0 refers to itself"},
      {"cycle of three", file({{0xA1, 1}, {0xA1, 2}, {0xA2, 3, 0}, {0x08}}),
       "object 0 contains itself"},
      {"cycle through a dictionary", file({{0xA1, 1}, {0xD1, 2, 0}, {0x51, 'k'}}),
       "object 0 contains itself"},
      {"missing object", file({{0xA1, 7}}), "object 0 refers to object 7, which does not exist"},
      {"array count far past the file",
       one({0xAF, 0x13, 0x7F, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}),
       "object 0 is truncated"},
      {"dictionary count far past the file", one({0xDF, 0x12, 0xFF, 0xFF, 0xFF, 0xFF}),
       "object 0 is truncated"},
      {"data count far past the file", one({0x4F, 0x13, 0, 0, 1, 0, 0, 0, 0, 0}),
       "object 0 is truncated"},
      {"UTF-16 count far past the file", one({0x6F, 0x13, 0x40, 0, 0, 0, 0, 0, 0, 0}),
       "object 0 is truncated"},
      {"array one reference short", RawPlist{{{0x10, 1}, {0xA3, 0, 0}}, 1, 1, 1}.build(),
       "object 1 is truncated"},
      {"negative count", one({0xAF, 0x13, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}),
       "object 0 has a negative count"},
      {"count that is no integer", one({0xAF, 0x51, 'x'}), "object 0 has a malformed count"},
      {"16-byte count", one({0x5F, 0x14, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 'x'}),
       "object 0 has a malformed count"},
      {"count cut off", one({0xAF}), "object 0 is truncated"},
      {"count integer cut off", one({0x5F, 0x12, 0}), "object 0 is truncated"},
      {"ASCII string cut off", one({0x55, 'a', 'b'}), "object 0 is truncated"},
      {"8-bit byte in ASCII", one({0x52, 'a', 0xC3}),
       "object 0 is an ASCII string with a byte above 0x7f"},
      {"UTF-16 cut off", one({0x62, 0, 'a', 0}), "object 0 is truncated"},
      {"lone high surrogate", one({0x61, 0xD8, 0x00}), "object 0 is malformed UTF-16"},
      {"lone low surrogate", one({0x62, 0xDC, 0x00, 0x00, 0x41}), "object 0 is malformed UTF-16"},
      {"high surrogate then letter", one({0x62, 0xD8, 0x00, 0x00, 0x41}),
       "object 0 is malformed UTF-16"},
      {"two high surrogates", one({0x62, 0xD8, 0x00, 0xDB, 0xFF}), "object 0 is malformed UTF-16"},
      {"integer key", file({{0xD1, 1, 1}, {0x10, 1}}),
       "object 0 has a key that is not a string (object 1)"},
      {"array key", file({{0xD1, 1, 1}, {0xA0}}),
       "object 0 has a key that is not a string (object 1)"},
      {"duplicate keys", file({{0xD2, 1, 2, 3, 3}, {0x51, 'k'}, {0x51, 'k'}, {0x09}}),
       "object 0 has the key \"k\" twice"},
      {"duplicate keys, ASCII and UTF-16",
       file({{0xD2, 1, 2, 3, 3}, {0x51, 'k'}, {0x61, 0, 'k'}, {0x09}}),
       "object 0 has the key \"k\" twice"},
      {"null", one({0x00}), "object 0 has unsupported marker 0x00"},
      {"fill", one({0x0F}), "object 0 has unsupported marker 0x0f"},
      {"url", one({0x0C}), "object 0 has unsupported marker 0x0c"},
      {"uid", one({0x80, 1}), "object 0 has unsupported marker 0x80"},
      {"set", one({0xC0}), "object 0 has unsupported marker 0xc0"},
      {"ordered set", one({0xB0}), "object 0 has unsupported marker 0xb0"},
      {"unassigned 0x70", one({0x70}), "object 0 has unsupported marker 0x70"},
      {"unassigned 0xf0", one({0xF0}), "object 0 has unsupported marker 0xf0"},
      {"32-byte integer", one({0x15, 0, 0}), "object 0 has unsupported marker 0x15"},
      {"2-byte real", one({0x21, 0, 0}), "object 0 has unsupported marker 0x21"},
      {"16-byte real", one({0x24, 0, 0}), "object 0 has unsupported marker 0x24"},
      {"odd date marker", one({0x34, 0, 0}), "object 0 has unsupported marker 0x34"},
      {"integer cut off", one({0x13, 1, 2}), "object 0 is truncated"},
      {"real cut off", one({0x23, 0, 0}), "object 0 is truncated"},
      {"float cut off", one({0x22, 0}), "object 0 is truncated"},
      {"date cut off", one({0x33}), "object 0 is truncated"},
      {"16-byte integer past 64 bits", one({0x14, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0}),
       "object 0 is an integer too large for 64 bits"},
      {"16-byte unsigned past int64",
       one({0x14, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}),
       "object 0 is an integer too large for 64 bits"},
      {"nesting past the limit", chain(BinaryPropertyList::kMaxNesting + 1),
       "nesting deeper than 512 levels"},
      {"far deeper nesting", chain(5000), "nesting deeper than 512 levels"},
  };
  // An offset table entry that points into the header.
  Data intoHeader = small();
  intoHeader[intoHeader.size() - 32 - 1] = 3;
  cases.push_back(
      {"offset into header", intoHeader, "object 1 has offset 3 outside the object area"});
  Data intoTable = small();
  intoTable[intoTable.size() - 32 - 1] = static_cast<std::uint8_t>(intoTable.size() - 34);
  cases.push_back(
      {"offset into table", intoTable, "object 1 has offset 12 outside the object area"});
  // Forty keys "kA"... with "kH" again in place of the 34th, all naming the same value.
  RawPlist bigDict{{{0xDF, 0x10, 40}}};
  for (std::uint8_t i = 0; i < 40; ++i) {
    bigDict.objects[0].insert(bigDict.objects[0].begin() + 3 + i, 1 + i);
    bigDict.objects[0].push_back(41);
    bigDict.objects.push_back({0x52, 'k', static_cast<std::uint8_t>('A' + (i == 33 ? 7 : i))});
  }
  bigDict.objects.push_back({0x08});
  cases.push_back(
      {"duplicate among many keys", bigDict.build(), "object 0 has the key \"kH\" twice"});
  return cases;
}

TEST(BinaryPropertyListStrictReader, RefusesBrokenFilesWithAPreciseReason) {
  for (const auto& c : brokenFiles()) {
    // An exact-size copy, so that any read past the end is caught by the sanitizers.
    Data exact(c.file);
    auto r = BinaryPropertyList::read(exact);
    ASSERT_FALSE(r.ok()) << c.name;
    EXPECT_EQ(r.error(), c.error) << c.name;
  }
}

TEST(BinaryPropertyListStrictReader, AcceptsTheUnusualButValidForms) {
  // Sizes other than 1, 2, 4 and 8 are legal for references and offsets.
  RawPlist odd{{{0xA2, 0, 0, 1, 0, 0, 2}, {0x51, 'a'}, {0x22, 0x3F, 0x80, 0, 0}}, 3, 5};
  auto r = BinaryPropertyList::read(odd.build());
  ASSERT_TRUE(r.ok()) << r.error();
  EXPECT_TRUE(Identical(*r, PlistValue(PlistValue::Array{"a", 1.0})));

  // A 16-byte integer that fits 64 bits, and a count written wider than needed.
  Data neg{0x14};
  neg.insert(neg.end(), 15, 0xFF);
  neg.push_back(0xFB);
  RawPlist wide{{{0xAF, 0x13, 0, 0, 0, 0, 0, 0, 0, 2, 1, 1}, neg}};
  r = BinaryPropertyList::read(wide.build());
  ASSERT_TRUE(r.ok()) << r.error();
  EXPECT_TRUE(Identical(*r, PlistValue(PlistValue::Array{std::int64_t{-5}, std::int64_t{-5}})));

  // The top object need not be the first, and unreachable objects are ignored.
  RawPlist later{{{0x00}, {0x51, 'x'}}, 1, 1, 1};
  r = BinaryPropertyList::read(later.build());
  ASSERT_TRUE(r.ok()) << r.error();
  EXPECT_EQ(*r, PlistValue("x"));

  // Nesting up to the limit is fine.
  r = BinaryPropertyList::read(chain(BinaryPropertyList::kMaxNesting));
  EXPECT_TRUE(r.ok()) << r.error();
}

TEST(BinaryPropertyListStrictReader, EveryTruncationFails) {
  PlistValue::Dictionary all{
      {"records", plist_samples::records(20, 3, true)},
      {"int", std::int64_t{-7}},
      {"real", 2.5},
      {"data", Data{1, 2, 3, 4, 5}},
      {"flag", true},
      {"empty", PlistValue::Array{}},
  };
  for (const PlistValue& v : {PlistValue(all), plist_samples::records(5)}) {
    auto full = BinaryPropertyList::write(v);
    ASSERT_TRUE(full.ok());
    for (size_t len = 0; len < full->size(); ++len) {
      Data prefix(full->begin(), full->begin() + static_cast<long>(len));
      auto r = BinaryPropertyList::read(prefix);
      EXPECT_FALSE(r.ok()) << "prefix of " << len << " bytes was accepted";
    }
  }
}

TEST(BinaryPropertyListStrictReader, DamagedBytesNeverDecodeToSomethingUnwritable) {
  // Whatever a damaged file decodes to must survive a write and read unchanged.
  auto full = BinaryPropertyList::write(plist_samples::records(4, 11, true));
  ASSERT_TRUE(full.ok());
  size_t accepted = 0;
  for (size_t pos = 0; pos < full->size(); ++pos) {
    std::uint8_t b = (*full)[pos];
    for (std::uint8_t replacement :
         {std::uint8_t{0}, std::uint8_t{0xFF}, std::uint8_t(b ^ 1), std::uint8_t(b ^ 0x80),
          std::uint8_t{0x0F}, std::uint8_t{0xAF}}) {
      Data damaged(*full);
      damaged[pos] = replacement;
      auto r = BinaryPropertyList::read(damaged);
      if (!r.ok())
        continue;
      ++accepted;
      auto again = BinaryPropertyList::write(*r);
      ASSERT_TRUE(again.ok()) << again.error();
      auto back = BinaryPropertyList::read(*again);
      ASSERT_TRUE(back.ok()) << back.error();
      ASSERT_TRUE(Identical(*back, *r)) << "byte " << pos;
    }
  }
  EXPECT_GT(accepted, 0u);  // damage to a string's letters still reads
}

TEST(BinaryPropertyListStrictReader, SharedObjectsCannotBlowUp) {
  // Forty levels of arrays, each naming the next fifteen times: 15^40 values from ~800 bytes.
  RawPlist laughs;
  laughs.offsetSize = 2;
  for (int level = 0; level < 40; ++level) {
    Data a{0xAF, 0x10, 15};
    a.insert(a.end(), 15, static_cast<std::uint8_t>(level + 1));
    laughs.objects.push_back(a);
  }
  laughs.objects.push_back({0x51, 'x'});
  auto r = BinaryPropertyList::read(laughs.build());
  ASSERT_FALSE(r.ok());
  EXPECT_EQ(r.error(), "decoded values would exceed 64 times the file's size");

  // One long string named ten thousand times.
  RawPlist wide;
  wide.offsetSize = 2;
  Data refs{0xAF, 0x11, 0x27, 0x10};
  refs.insert(refs.end(), 10000, 1);
  wide.objects.push_back(refs);
  Data text{0x5F, 0x11, 0x27, 0x10};
  text.insert(text.end(), 10000, 'w');
  wide.objects.push_back(text);
  r = BinaryPropertyList::read(wide.build());
  ASSERT_FALSE(r.ok());
  EXPECT_EQ(r.error(), "decoded values would exceed 64 times the file's size");

  // Sharing at the scale real lists have is fine: short strings named 10,000 times.
  text = {0x55, 'p', 'h', 'o', 't', 'o'};
  wide.objects[1] = text;
  r = BinaryPropertyList::read(wide.build());
  ASSERT_TRUE(r.ok()) << r.error();
  EXPECT_EQ(r->array().size(), 10000u);
  EXPECT_EQ(r->array()[9999], PlistValue("photo"));
}

}  // namespace
