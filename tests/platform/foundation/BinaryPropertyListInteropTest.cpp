// Python's plistlib, run as a separate process, on the other side of the codec.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>

#include "PlistSamples.h"
#include "PlistTestSupport.h"
#include "platform/foundation/BinaryPropertyList.h"

namespace {

namespace fs = std::filesystem;
using plist_test::Identical;
using plist_test::manifest;

// Dates plistlib can hold: whole microseconds within datetime's years. No 0.0 beside -0.0:
// plistlib shares equal values, and to Python those two are equal.
PlistValue everyType() {
  PlistValue::Array many;
  for (int i = 0; i < 300; ++i)
    many.emplace_back("item " + std::to_string(i));
  return PlistValue(PlistValue::Dictionary{
      {"ints",
       PlistValue::Array{0, 255, 256, 65535, 65536, std::int64_t{0xFFFFFFFF},
                         std::int64_t{0x100000000}, -1, std::numeric_limits<std::int64_t>::min(),
                         std::numeric_limits<std::int64_t>::max()}},
      {"reals",
       PlistValue::Array{-0.0, 0.1, -2.5e-300, 1e300, std::numeric_limits<double>::infinity(),
                         std::numeric_limits<double>::denorm_min()}},
      {"dates",
       PlistValue::Array{Date{0}, Date{-978307200.0}, Date{785000000.5}, Date{-63000000000.25}}},
      {"flags", PlistValue::Array{true, false}},
      {"data", PlistValue::Array{Data{}, Data{0, 1, 0xFF}, Data(400, 0x5A)}},
      {"strings", PlistValue::Array{"", "plain", std::string(5000, 'L'), "Résumé 2026.pdf", "写真",
                                    "😀 astral 𝄞", std::string("nul\0in", 6)}},
      {"Schlüssel mit Umlaut", "non-ASCII key"},
      {"many", many},
      {"empty", PlistValue::Dictionary{}},
  });
}

class BinaryPropertyListInterop : public ::testing::Test {
 protected:
  void SetUp() override {
    static int counter = 0;
    dir_ = fs::temp_directory_path() / ("nimbrel-plist-interop-" + std::to_string(::getpid()) +
                                        "-" + std::to_string(counter++));
    fs::create_directories(dir_);
  }
  void TearDown() override { fs::remove_all(dir_); }

  fs::path file(const std::string& name) const { return dir_ / name; }

  static void save(const fs::path& path, const void* bytes, size_t n) {
    std::ofstream out(path, std::ios::binary);
    out.write(static_cast<const char*>(bytes), static_cast<std::streamsize>(n));
  }

  static Data load(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return Data(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }

  // Runs the helper script; its complaint, if any, becomes the failure message.
  ::testing::AssertionResult python(const std::string& mode, const fs::path& a, const fs::path& b) {
    fs::path log = dir_ / "python.log";
    std::string cmd =
        "python3 '" NIMBREL_SOURCE_DIR "/tests/platform/foundation/plistlib_interop.py' " + mode +
        " '" + a.string() + "' '" + b.string() + "' >'" + log.string() + "' 2>&1";
    int status = std::system(cmd.c_str());
    if (status == 0)
      return ::testing::AssertionSuccess();
    std::ifstream in(log);
    std::stringstream text;
    text << in.rdbuf();
    return ::testing::AssertionFailure()
           << "python3 " << mode << " exited with " << status << ": " << text.str();
  }

  // plistlib reads `bytes` and compares what it finds with `v`.
  ::testing::AssertionResult plistlibReads(const Data& bytes, const PlistValue& v) {
    std::string m;
    manifest(v, m);
    save(file("ours.plist"), bytes.data(), bytes.size());
    save(file("expected.txt"), m.data(), m.size());
    return python("check", file("ours.plist"), file("expected.txt"));
  }

  void codecToPlistlib(const PlistValue& v) {
    auto bytes = BinaryPropertyList::write(v);
    ASSERT_TRUE(bytes.ok()) << bytes.error();
    EXPECT_TRUE(plistlibReads(*bytes, v));
  }

  void plistlibToCodec(const PlistValue& v) {
    std::string m;
    manifest(v, m);
    save(file("values.txt"), m.data(), m.size());
    ASSERT_TRUE(python("write", file("values.txt"), file("theirs.plist")));
    auto back = BinaryPropertyList::read(load(file("theirs.plist")));
    ASSERT_TRUE(back.ok()) << back.error();
    EXPECT_TRUE(Identical(*back, v));
  }

  fs::path dir_;
};

// Full-precision dates here: the script compares them after plistlib's microsecond rounding.
TEST_F(BinaryPropertyListInterop, EachSideReadsWhatTheOtherWrites) {
  for (size_t n : {0, 1, 10000}) {
    SCOPED_TRACE(n);
    codecToPlistlib(plist_samples::records(n, 5, true));
  }
  codecToPlistlib(everyType());
  for (size_t n : {0, 1, 10000}) {
    SCOPED_TRACE(n);
    plistlibToCodec(plist_samples::records(n, 9, true, true));
  }
  plistlibToCodec(everyType());
}

TEST_F(BinaryPropertyListInterop, TheCheckNoticesADifference) {
  // The script must not pass what differs, or the tests above would prove nothing.
  auto v = plist_samples::records(3, 5);
  auto bytes = BinaryPropertyList::write(v);
  ASSERT_TRUE(bytes.ok());
  v.array()[2].set("filetype", "music!");
  EXPECT_FALSE(plistlibReads(*bytes, v));
}

}  // namespace
