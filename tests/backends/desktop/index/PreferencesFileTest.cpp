#include "backends/desktop/index/PreferencesFile.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <thread>

#include "backends/desktop/DesktopTestSupport.h"
#include "platform/foundation/BinaryPropertyList.h"
#include "platform/foundation/ManualRunLoop.h"
#include "platform/foundation/Diagnostics.h"
#include "platform/foundation/NSUserDefaults.h"

namespace nimbrel::desktop {
namespace {

using namespace testing;

class PreferencesFileTest : public ::testing::Test {
 protected:
  // Heard and dropped, so that no line is kept for a later test's listener.
  void SetUp() override { Diagnostics::listen([](std::string_view) {}); }
  void TearDown() override { Diagnostics::listen(nullptr); }
  std::vector<std::string> temporaries() {
    std::vector<std::string> out;
    for (const auto& e : fs::directory_iterator(fs::path(path).parent_path())) {
      if (e.path().filename().string().find(".tmp-") != std::string::npos) out.push_back(e.path());
    }
    return out;
  }

  ManualRunLoop loop;
  TempFolder folder;
  std::string path = folder / "config/nimbrel/preferences.plist";
};

TEST_F(PreferencesFileTest, WritesAPrivateBinaryPropertyListThatReadsBack) {
  PreferencesFile file(path);
  EXPECT_TRUE(file.load().empty()) << "no file yet is no preferences";
  ASSERT_TRUE(file.save({{"isFirstTime", true}, {"recentFiles", Data{1, 2, 3}}}));
  struct stat st;
  ASSERT_EQ(::stat(path.c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 0777, 0600u);
  EXPECT_EQ(readText(path).substr(0, 8), "bplist00");
  auto values = PreferencesFile(path).load();
  ASSERT_EQ(values.size(), 2u);
  EXPECT_EQ(values[1].second, PlistValue(Data{1, 2, 3}));
  EXPECT_TRUE(temporaries().empty());
}

// A file that does not decode is kept aside and reported: desktop_hardening.py starts over one.
TEST_F(PreferencesFileTest, StaleTemporariesOfAKilledWriterAreCleanedAtLoad) {
  PreferencesFile file(path);
  ASSERT_TRUE(file.save({{"a", 1}}));
  std::ofstream(path + ".tmp-ABC123") << "half";
  ASSERT_EQ(temporaries().size(), 1u);
  EXPECT_EQ(file.load().size(), 1u);
  EXPECT_TRUE(temporaries().empty());
}

TEST_F(PreferencesFileTest, ValuesSetWithoutSynchronizeReachTheFileAtTheDebounce) {
  auto file = std::make_shared<PreferencesFile>(path);
  NSUserDefaults defaults(file, 1.0);
  defaults.setBool(true, "kIsListView");
  loop.advance(0.9);
  EXPECT_FALSE(fs::exists(path));
  loop.advance(0.2);
  ASSERT_TRUE(fs::exists(path));
  EXPECT_TRUE(NSUserDefaults(std::make_shared<PreferencesFile>(path)).boolForKey("kIsListView"));
}

// The content a writer stores at step n, so that a reader can tell a whole file from a torn one.
PlistValue::Dictionary stateAt(std::int64_t n) {
  Data blob(static_cast<size_t>(1000 + (n * 7919) % 60000), static_cast<std::uint8_t>(n & 0xFF));
  return {{"counter", PlistValue(n)}, {"isFirstTime", PlistValue(n % 2 == 0)}, {"recentFiles", PlistValue(blob)}};
}

// CI's run is short; `make stress` sets NIMBREL_KILL_ROUNDS for the long one.
int killRounds() {
  const char* text = std::getenv("NIMBREL_KILL_ROUNDS");
  int rounds = text ? std::atoi(text) : 0;
  return rounds > 0 ? rounds : 220;
}

TEST_F(PreferencesFileTest, AKillAtAnyMomentLeavesAWholeFileThatDecodes) {
  ASSERT_TRUE(PreferencesFile(path).save(stateAt(0)));
  std::mt19937 random(20261122);
  std::int64_t lastSeen = 0;
  int killedMidway = 0;
  const int rounds = killRounds();
  for (int round = 0; round < rounds; ++round) {
    int progress[2];
    ASSERT_EQ(::pipe(progress), 0);
    pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      ::close(progress[0]);
      // The writer: the standard defaults over the file, synchronised after every change.
      auto store = std::make_shared<PreferencesFile>(path);
      NSUserDefaults defaults(store, 3600);
      auto current = store->load();
      std::int64_t n = current.empty() ? 0 : PlistValue(current).find("counter")->integer();
      for (;;) {
        ++n;
        for (auto& [k, v] : stateAt(n)) defaults.setObject(v, k);
        defaults.synchronize();
        // Tells the parent that a whole write is done, however slow this build is.
        char done = 1;
        if (::write(progress[1], &done, 1) < 0) {
        }
      }
    }
    ::close(progress[1]);
    char first;
    ASSERT_EQ(::read(progress[0], &first, 1), 1);
    ::close(progress[0]);
    // Real time is the point here: the kill must land anywhere inside the writer's work.
    std::this_thread::sleep_for(std::chrono::microseconds(std::uniform_int_distribution<int>(200, 6000)(random)));
    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status));
    if (!temporaries().empty()) ++killedMidway;

    std::ifstream in(path, std::ios::binary);
    Data bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    auto root = BinaryPropertyList::read(bytes);
    ASSERT_TRUE(root.ok()) << "round " << round << ": " << root.error();
    ASSERT_TRUE(root->isDictionary());
    const PlistValue* counter = root->find("counter");
    ASSERT_TRUE(counter && counter->isInteger());
    std::int64_t n = counter->integer();
    EXPECT_GE(n, lastSeen) << "a file never goes back to an older state";
    EXPECT_EQ(*root, PlistValue(stateAt(n))) << "round " << round << ": a torn mix of two states";
    lastSeen = n;
  }
  EXPECT_GE(lastSeen, rounds) << "every writer finished at least one write before it was killed";
  RecordProperty("killsDuringAWrite", killedMidway);
  std::printf("%d SIGKILLs, %d of them during a write, 0 torn files, last state %lld\n", rounds, killedMidway,
              static_cast<long long>(lastSeen));
}

}  // namespace
}  // namespace nimbrel::desktop
