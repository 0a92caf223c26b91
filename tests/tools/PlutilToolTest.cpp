// Runs the built nimbrel-plutil as a user would.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "platform/foundation/BinaryPropertyList.h"
#include "platform/foundation/PlistSamples.h"
#include "platform/foundation/PlistTestSupport.h"
#include "plutil/PlistJson.h"
#include "plutil/PlistPrinter.h"

namespace {

namespace fs = std::filesystem;
using plist_test::Identical;

struct ToolRun {
  bool exited = false;
  int status = -1;
  std::string out, err;
};

class PlutilTool : public ::testing::Test {
 protected:
  void SetUp() override {
    static int counter = 0;
    dir_ = fs::temp_directory_path() /
           ("nimbrel-plutil-test-" + std::to_string(::getpid()) + "-" + std::to_string(counter++));
    fs::create_directories(dir_);
  }
  void TearDown() override { fs::remove_all(dir_); }

  fs::path file(const std::string& name) const { return dir_ / name; }

  static void save(const fs::path& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
  }
  static void save(const fs::path& path, const Data& bytes) {
    save(path, std::string(bytes.begin(), bytes.end()));
  }
  static std::string load(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }
  static Data loadData(const fs::path& path) {
    std::string s = load(path);
    return Data(s.begin(), s.end());
  }

  // Standard input, output and error go through files, so nothing can block on a pipe.
  ToolRun run(std::vector<std::string> args, const std::string& input = "") {
    save(file("stdin"), input);
    pid_t pid = ::fork();
    if (pid == 0) {
      int in = ::open(file("stdin").c_str(), O_RDONLY);
      int out = ::open(file("stdout").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
      int err = ::open(file("stderr").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
      ::dup2(in, 0);
      ::dup2(out, 1);
      ::dup2(err, 2);
      std::vector<char*> argv{const_cast<char*>(NIMBREL_PLUTIL)};
      for (auto& a : args)
        argv.push_back(a.data());
      argv.push_back(nullptr);
      ::execv(NIMBREL_PLUTIL, argv.data());
      ::_exit(127);
    }
    int status = 0;
    ::waitpid(pid, &status, 0);
    ToolRun r;
    r.exited = WIFEXITED(status);
    r.status = r.exited ? WEXITSTATUS(status) : -1;
    r.out = load(file("stdout"));
    r.err = load(file("stderr"));
    return r;
  }

  // A failure is status 1 with one line of reason, however bad the input.
  static void expectCleanFailure(const ToolRun& r, const std::string& reason) {
    EXPECT_TRUE(r.exited) << "ended by a signal";
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err, "nimbrel-plutil: " + reason + "\n");
    EXPECT_TRUE(r.out.empty());
  }

  fs::path dir_;
};

TEST_F(PlutilTool, BinaryToJsonAndBackInPlaceIsLossless) {
  PlistValue original = plist_samples::records(500, 21, true);
  original.array().push_back(
      PlistValue(PlistValue::Dictionary{{"real", 0.1},
                                        {"negative zero", -0.0},
                                        {"int", std::numeric_limits<std::int64_t>::min()},
                                        {"precise", Date{785000000.123456789}},
                                        {"blob", Data{0, 1, 2, 0xFF}},
                                        {"yes", true}}));
  save(file("prefs.plist"), *BinaryPropertyList::write(original));
  ::chmod(file("prefs.plist").c_str(), 0600);

  ToolRun toJson = run({"-convert", "json", file("prefs.plist")});
  ASSERT_EQ(toJson.status, 0) << toJson.err;
  auto json = PlistJson::read(load(file("prefs.plist")));
  ASSERT_TRUE(json.ok()) << json.error();
  EXPECT_TRUE(Identical(*json, original));
  EXPECT_EQ(fs::status(file("prefs.plist")).permissions() & fs::perms::all,
            fs::perms::owner_read | fs::perms::owner_write);

  ToolRun toBinary = run({"-convert", "binary1", file("prefs.plist")});
  ASSERT_EQ(toBinary.status, 0) << toBinary.err;
  auto back = BinaryPropertyList::read(loadData(file("prefs.plist")));
  ASSERT_TRUE(back.ok()) << back.error();
  EXPECT_TRUE(Identical(*back, original));
  // Nothing is left beside the file.
  EXPECT_EQ(std::distance(fs::directory_iterator(dir_), fs::directory_iterator()), 4);
}

TEST_F(PlutilTool, StandardStreamsAndOutputFile) {
  PlistValue v = plist_samples::records(3);
  Data binary = *BinaryPropertyList::write(v);
  std::string input(binary.begin(), binary.end());

  ToolRun toStdout = run({"-convert", "json", "-"}, input);
  ASSERT_EQ(toStdout.status, 0) << toStdout.err;
  EXPECT_EQ(toStdout.out, *PlistJson::write(v) + "\n");

  ToolRun dashO = run({"-convert", "binary1", "-o", "-", "-"}, toStdout.out);
  ASSERT_EQ(dashO.status, 0) << dashO.err;
  EXPECT_EQ(dashO.out, input);

  save(file("in.plist"), binary);
  ToolRun toFile = run({"-convert", "json", "-o", file("out.json"), file("in.plist")});
  ASSERT_EQ(toFile.status, 0) << toFile.err;
  EXPECT_TRUE(toFile.out.empty());
  EXPECT_EQ(load(file("out.json")), toStdout.out);
  EXPECT_EQ(loadData(file("in.plist")), binary);  // the source is left alone

  ToolRun print = run({"-p", file("in.plist")});
  ASSERT_EQ(print.status, 0) << print.err;
  EXPECT_EQ(print.out, PlistPrinter::print(v));
}

TEST_F(PlutilTool, BadInputFailsCleanlyAndLeavesTheFileAlone) {
  save(file("bad.json"), std::string("{\"when\": {\"$date\": \"yesterday\"}}"));
  ToolRun r = run({"-convert", "binary1", file("bad.json")});
  expectCleanFailure(r,
                     file("bad.json").string() +
                         ": \"$date\" must be a number of seconds since 2001-01-01, not a string");
  EXPECT_EQ(load(file("bad.json")), "{\"when\": {\"$date\": \"yesterday\"}}");

  Data truncated = *BinaryPropertyList::write(plist_samples::records(2));
  truncated.resize(truncated.size() - 5);
  save(file("cut.plist"), truncated);
  expectCleanFailure(run({"-p", file("cut.plist")}),
                     file("cut.plist").string() + ": bad offset size 0 in trailer");

  expectCleanFailure(run({"-p", "-"}, "{\"a\": null}"), "-: null has no property-list form");
  expectCleanFailure(run({"-p", "-"}, "<?xml version=\"1.0\"?><plist/>"),
                     "-: XML property lists are not supported");
  expectCleanFailure(run({"-p", file("missing")}),
                     file("missing").string() + ": cannot open: No such file or directory");

  Data nan = *BinaryPropertyList::write(
      PlistValue(PlistValue::Array{std::numeric_limits<double>::quiet_NaN()}));
  save(file("nan.plist"), nan);
  ToolRun noJson = run({"-convert", "json", file("nan.plist")});
  EXPECT_EQ(noJson.status, 1);
  EXPECT_EQ(loadData(file("nan.plist")), nan);

  // Random bytes of every kind end in a reason, never a crash.
  std::string junk;
  plist_samples::Rng rng(3);
  for (int i = 0; i < 2000; ++i)
    junk += static_cast<char>(rng.below(256));
  for (const std::string& prefix : {std::string("bplist00"), std::string("["), std::string("")}) {
    ToolRun j = run({"-p", "-"}, prefix + junk);
    EXPECT_TRUE(j.exited);
    EXPECT_EQ(j.status, 1);
    EXPECT_TRUE(j.err.starts_with("nimbrel-plutil: -: ")) << j.err;
    EXPECT_EQ(std::count(j.err.begin(), j.err.end(), '\n'), 1) << j.err;
  }
}

TEST_F(PlutilTool, UsageErrorsAreOneLine) {
  const std::string usage =
      " (usage: nimbrel-plutil -convert json|binary1 [-o OUT] FILE | -p FILE | -lists FILE | -mend [-o OUT] FILE)";
  expectCleanFailure(run({}), "nothing to do: give -convert, -p, -lists or -mend" + usage);
  expectCleanFailure(run({"-convert", "xml1", "f"}),
                     "unknown format \"xml1\" (json or binary1)" + usage);
  expectCleanFailure(run({"-convert"}), "-convert needs a format (json or binary1)" + usage);
  expectCleanFailure(run({"-convert", "json"}), "no file given" + usage);
  expectCleanFailure(run({"-convert", "json", "-o"}), "-o needs a file name" + usage);
  expectCleanFailure(run({"-p", "a", "b"}), "only one file at a time" + usage);
  expectCleanFailure(run({"-p", "-o", "x", "a"}), "-o goes with -convert and -mend only" + usage);
  expectCleanFailure(run({"-lint", "a"}), "unknown option -lint" + usage);
  ToolRun help = run({"-h"});
  EXPECT_EQ(help.status, 0);
  EXPECT_NE(help.out.find("usage:"), std::string::npos);
}

}  // namespace
