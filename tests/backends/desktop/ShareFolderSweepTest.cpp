#include "backends/desktop/ShareFolderSweep.h"

#include <gtest/gtest.h>
#include <sys/time.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

namespace nimbrel::desktop {
namespace {

namespace fs = std::filesystem;
using std::chrono::hours;

TEST(ShareFolderSweepTest, RemovesOnlyOldShareFolders) {
  const fs::path parent = fs::temp_directory_path() / ("nimbrel-sweep-" + std::to_string(::getpid()));
  const auto now = std::chrono::system_clock::now();
  auto make = [&](const std::string& name, hours age) {
    fs::create_directories(parent / name);
    std::ofstream(parent / name / "IMG_0001.jpg") << "picture";
    const auto when = std::chrono::system_clock::to_time_t(now - age);
    const timeval times[2] = {{when, 0}, {when, 0}};
    ::utimes((parent / name).c_str(), times);
  };
  make("nimbrel-share-old", hours(25));
  make("nimbrel-share-recent", hours(23));
  make("someone-elses", hours(100));
  fs::create_directory_symlink(parent / "someone-elses", parent / "nimbrel-share-link");

  EXPECT_EQ(ShareFolderSweep::removeOld(parent, now), 1);
  EXPECT_FALSE(fs::exists(parent / "nimbrel-share-old"));
  EXPECT_TRUE(fs::exists(parent / "nimbrel-share-recent" / "IMG_0001.jpg"));
  EXPECT_TRUE(fs::exists(parent / "someone-elses" / "IMG_0001.jpg"));
  EXPECT_EQ(ShareFolderSweep::removeOld((parent / "absent").string(), now), 0);
  fs::remove_all(parent);
}

}  // namespace
}  // namespace nimbrel::desktop
