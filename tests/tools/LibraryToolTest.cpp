// Runs the built nimbrel-library as a user would: its light commands load no codec library, and
// a scan loads the codec module only when it has a file to read.

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <regex>
#include <string>

namespace {

namespace fs = std::filesystem;

std::string output(const std::string& command, int& status) {
  std::string out;
  FILE* pipe = ::popen((command + " 2>&1").c_str(), "r");
  if (!pipe) return out;
  std::array<char, 4096> buf;
  while (size_t n = std::fread(buf.data(), 1, buf.size(), pipe)) out.append(buf.data(), n);
  status = ::pclose(pipe);
  return out;
}

TEST(LibraryTool, TheLightProgramsLinkNoQtOrCodecLibrary) {
  const std::regex heavy(R"((libQt6|libav|libsw|libexiv2|libtag|libheif|libjpeg|libpng)[^ ]*\.so)");
  for (const char* program : {NIMBREL_LIBRARY, NIMBREL_PLUTIL}) {
    int status = -1;
    std::string libraries = output(std::string("ldd ") + program, status);
    ASSERT_EQ(status, 0) << libraries;
    std::smatch found;
    EXPECT_FALSE(std::regex_search(libraries, found, heavy)) << program << " links " << found.str();
  }
}

TEST(LibraryTool, ScanLoadsTheCodecModuleOnlyToReadAFile) {
  fs::path dir = fs::temp_directory_path() / ("nimbrel-library-test-" + std::to_string(::getpid()));
  fs::create_directories(dir / "Pictures" / "Trip");
  fs::create_directories(dir / "Videos");
  fs::create_directories(dir / "Music");
  std::string env = "NIMBREL_HOME=" + (dir / "home").string() + " XDG_CACHE_HOME=" + (dir / "cache").string() +
                    " XDG_STATE_HOME=" + (dir / "state").string() + " XDG_CONFIG_HOME=" + (dir / "config").string();
  std::string folders = " scan --pictures " + (dir / "Pictures").string() + " --videos " + (dir / "Videos").string() +
                        " --music " + (dir / "Music").string();
  int status = -1;
  std::string scan = output(env + " " + NIMBREL_LIBRARY + folders, status);
  EXPECT_EQ(status, 0) << scan;
  EXPECT_NE(scan.find("photos and videos: 0 images, 0 videos, 1 albums"), std::string::npos) << scan;
  std::string report = output(env + " " + NIMBREL_LIBRARY + " status", status);
  EXPECT_EQ(status, 0) << report;
  EXPECT_NE(report.find("indexed: 0 images, 0 videos, 1 albums"), std::string::npos) << report;

  // The program alone, without the module beside it: nothing to read needs none.
  fs::create_directories(dir / "alone");
  fs::copy_file(NIMBREL_LIBRARY, dir / "alone" / "nimbrel-library");
  const std::string alone = env + " " + (dir / "alone" / "nimbrel-library").string() + folders;
  scan = output(alone, status);
  EXPECT_EQ(status, 0) << scan;
  std::FILE* picture = std::fopen((dir / "Pictures" / "Trip" / "new.jpg").c_str(), "w");
  ASSERT_TRUE(picture);
  std::fputs("not a picture", picture);
  std::fclose(picture);
  scan = output(alone, status);
  EXPECT_NE(status, 0) << scan;
  EXPECT_NE(scan.find("nimbrel-library: cannot load the media readers"), std::string::npos) << scan;
  fs::remove_all(dir);
}

}  // namespace
