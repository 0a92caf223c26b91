#include "platform/foundation/Diagnostics.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

TEST(DiagnosticsTest, LinesGoToStandardErrorTheLogFileAndALaterListenerButNeverStandardOutput) {
  std::string logFile = "/tmp/nimbrel-diagnostics-" + std::to_string(::getpid()) + ".log";
  Diagnostics::setLogFile(logFile);
  ::testing::internal::CaptureStdout();
  ::testing::internal::CaptureStderr();
  Diagnostics::report("kept aside before anyone listened");
  std::vector<std::string> heard;
  Diagnostics::listen([&](std::string_view line) { heard.emplace_back(line); });
  Diagnostics::report("told while listening");
  Diagnostics::listen(nullptr);
  Diagnostics::setLogFile("");
  std::string err = ::testing::internal::GetCapturedStderr();
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");

  const std::string both = "kept aside before anyone listened\ntold while listening\n";
  EXPECT_EQ(err, both);
  EXPECT_EQ(heard, (std::vector<std::string>{"kept aside before anyone listened", "told while listening"}));
  std::ifstream in(logFile);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), both);
  std::remove(logFile.c_str());
}

}  // namespace
