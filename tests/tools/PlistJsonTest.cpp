#include "plutil/PlistJson.h"

#include <gtest/gtest.h>

#include <limits>
#include <nlohmann/json.hpp>
#include <string>

#include "platform/foundation/PlistSamples.h"
#include "platform/foundation/PlistTestSupport.h"

namespace {

using plist_test::Identical;

PlistValue viaJson(const PlistValue& v) {
  auto json = PlistJson::write(v);
  EXPECT_TRUE(json.ok()) << json.error();
  if (!json.ok())
    return {};
  auto back = PlistJson::read(*json);
  EXPECT_TRUE(back.ok()) << back.error() << "\n" << *json;
  return back.ok() ? *back : PlistValue();
}

TEST(PlistJson, EveryValueComesBackExactly) {
  const std::vector<PlistValue> values = {
      true, false, std::int64_t{0}, std::int64_t{-1}, std::numeric_limits<std::int64_t>::min(),
      std::numeric_limits<std::int64_t>::max(), 0.0, -0.0, 1.0, 0.1, 1e300, -2.5e-300,
      123456789.123456789, std::numeric_limits<double>::denorm_min(),
      std::numeric_limits<double>::max(), Date{0}, Date{785000000.123456789}, Date{-1e12}, Date{1},
      Data{}, Data{0, 1, 0xFE, 0xFF}, Data(1000, 0x42), "", "plain",
      "quote \" backslash \\ newline \n tab \t nul", std::string("a\0b", 3), "Grüße 写真 😀", "$date",
      "$data", PlistValue::Array{}, PlistValue::Dictionary{},
  };
  for (const auto& v : values)
    EXPECT_TRUE(Identical(viaJson(v), v)) << plistTypeName(v.type());
  auto records = plist_samples::records(300, 4, true);
  EXPECT_TRUE(Identical(viaJson(records), records));
  // Key order is the file's, not sorted.
  PlistValue ordered(PlistValue::Dictionary{
      {"z", 1}, {"a", 2}, {"m", PlistValue::Dictionary{{"y", 1}, {"b", 2}}}});
  EXPECT_TRUE(Identical(viaJson(ordered), ordered));
}

// The writer spells JSON itself; nlohmann's dump of the same values is the reference text. Dates
// and data are objects of one reserved key; a real keeps its ".0".
TEST(PlistJson, WritesTheTextNlohmannWouldWrite) {
  using Json = nlohmann::ordered_json;
  const std::string controls = std::string("\0\x01\x1f\x7f \"\\/\b\f\n\r\t", 13) + "Grüße 😀";
  PlistValue v(PlistValue::Dictionary{
      {"reals", PlistValue::Array{0.1, -0.0, 1e21, 1e-7, 5e-324, 1.7976931348623157e308, 123456.0,
                                  785000000.123456789}},
      {"ints", PlistValue::Array{std::int64_t{-9223372036854775807 - 1}, 0, 42}},
      {controls, controls},
      {"empty", PlistValue::Dictionary{{"a", PlistValue::Array{}}, {"d", PlistValue::Dictionary{}}}},
      {"nested", PlistValue::Array{PlistValue::Array{true, false, PlistValue::Array{""}}}},
      {"date", Date{2.5}}, {"data", Data{0, 1, 0xFF}}});
  Json reference = Json::object();
  reference["reals"] = Json::array({0.1, -0.0, 1e21, 1e-7, 5e-324, 1.7976931348623157e308, 123456.0,
                                     785000000.123456789});
  reference["ints"] = Json::array({std::int64_t{-9223372036854775807 - 1}, 0, 42});
  reference[controls] = controls;
  reference["empty"] = Json::object({{"a", Json::array()}, {"d", Json::object()}});
  reference["nested"] = Json::array({Json::array({true, false, Json::array({""})})});
  reference["date"] = Json::object({{"$date", 2.5}});
  reference["data"] = Json::object({{"$data", "AAH/"}});
  auto json = PlistJson::write(v);
  ASSERT_TRUE(json.ok()) << json.error();
  EXPECT_EQ(*json, reference.dump(2));
  EXPECT_FALSE(PlistJson::write(PlistValue(std::string("\xC0\xAF"))).ok());
  EXPECT_FALSE(PlistJson::write(PlistValue(std::string("\xED\xA0\x80"))).ok());
}

TEST(PlistJson, ReadsNumbersByTheirSpelling) {
  auto v = PlistJson::read(R"([1, 1.0, 1e2, -0, -0.0, 9223372036854775807, -9223372036854775808,
                             {"$date": 3}, {"$date": 0.5}, {"$data": "AAH/"}])");
  ASSERT_TRUE(v.ok()) << v.error();
  PlistValue expected(PlistValue::Array{
      1, 1.0, 100.0, 0, -0.0, std::numeric_limits<std::int64_t>::max(),
      std::numeric_limits<std::int64_t>::min(), Date{3}, Date{0.5}, Data{0, 1, 0xFF}});
  EXPECT_TRUE(Identical(*v, expected));
}

TEST(PlistJson, RefusesJsonThatIsNoPropertyList) {
  struct Case {
    const char* json;
    const char* error;
  };
  const Case cases[] = {
      {"null", "null has no property-list form"},
      {R"({"a": [1, null]})", "null has no property-list form"},
      {R"({"$date": "2026-03-01"})",
       "\"$date\" must be a number of seconds since 2001-01-01, not a string"},
      {R"({"$date": {}})",
       "\"$date\" must be a number of seconds since 2001-01-01, not a dictionary"},
      {R"({"$date": true})",
       "\"$date\" must be a number of seconds since 2001-01-01, not a boolean"},
      {R"({"$date": 1, "other": 2})", "an object with \"$date\" must have no other key"},
      {R"({"$date": 1, "$data": ""})", "an object with \"$date\" must have no other key"},
      {R"({"$date": 9223372036854775807})",
       "\"$date\" 9223372036854775807 is not exact as a double"},
      {R"({"$data": 5})", "\"$data\" must be a base64 string, not a integer"},
      {R"({"$data": "not base64!"})", "\"$data\" is not valid base64"},
      {"9223372036854775808", "the integer 9223372036854775808 does not fit 64 bits"},
      {"-9223372036854775809", "the integer -9223372036854775809 does not fit 64 bits"},
      {"123456789012345678901234567890",
       "the integer 123456789012345678901234567890 does not fit 64 bits"},
      {R"({"k": 1, "j": 2, "k": 3})", "the key \"k\" appears twice in one object"},
  };
  for (const auto& c : cases) {
    auto r = PlistJson::read(c.json);
    ASSERT_FALSE(r.ok()) << c.json;
    EXPECT_EQ(r.error(), c.error) << c.json;
  }
  for (const char* broken : {"", "[1, 2", "{\"a\" 1}", "[1] [2]", "\"\\ud800\"", "1e400", "'x'"}) {
    auto r = PlistJson::read(broken);
    EXPECT_TRUE(!r.ok() && !r.error().empty()) << broken;
  }
  std::string deep(PlistJson::kMaxNesting + 1, '[');
  deep += std::string(PlistJson::kMaxNesting + 1, ']');
  auto r = PlistJson::read(deep);
  ASSERT_FALSE(r.ok());
  EXPECT_EQ(r.error(), "nesting deeper than 512 levels");
  std::string far(200000, '[');
  EXPECT_FALSE(PlistJson::read(far).ok());
}

TEST(PlistJson, RefusesPropertyListsThatJsonCannotHold) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  for (const PlistValue& v : {PlistValue(nan), PlistValue(-inf), PlistValue(Date{inf}),
                              PlistValue(PlistValue::Array{1, Date{nan}})}) {
    EXPECT_FALSE(PlistJson::write(v).ok()) << plistTypeName(v.type());
  }
  auto reserved = PlistJson::write(PlistValue(PlistValue::Dictionary{{"$date", 1.0}}));
  ASSERT_FALSE(reserved.ok());
  EXPECT_EQ(reserved.error(), "the dictionary key \"$date\" is reserved in the JSON form");
  EXPECT_FALSE(PlistJson::write(PlistValue(PlistValue::Dictionary{{"$data", "x"}, {"y", 1}})).ok());
}

}  // namespace
