// Every platform test starts, and leaves, the platform as a new process finds it, so that no
// test depends on the order they run in.

#include <gtest/gtest.h>

#include "platform/PlatformState.h"

namespace {

class ResetAroundEachTest : public ::testing::EmptyTestEventListener {
  void OnTestStart(const ::testing::TestInfo&) override { resetPlatformState(); }
  void OnTestEnd(const ::testing::TestInfo&) override { resetPlatformState(); }
};

[[maybe_unused]] const bool kRegistered = [] {
  ::testing::UnitTest::GetInstance()->listeners().Append(new ResetAroundEachTest);
  return true;
}();

}  // namespace
