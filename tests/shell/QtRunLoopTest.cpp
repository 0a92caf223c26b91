#include "shell/QtRunLoop.h"

#include <QCoreApplication>
#include <QThread>

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/foundation/DispatchQueue.h"

namespace nimbrel::shell {
namespace {

class QtRunLoopTest : public ::testing::Test {
 protected:
  QtRunLoop loop_{1000.0};
  RunLoop* previous_ = RunLoop::install(&loop_);
  ~QtRunLoopTest() override {
    loop_.waitForBackground();
    RunLoop::install(previous_);
  }
};

TEST_F(QtRunLoopTest, TasksDueTogetherRunInPostOrderAndNeverInsideTheirCaller) {
  std::vector<int> order;
  for (int i = 0; i < 200; ++i) DispatchQueue::main().async([&order, i] { order.push_back(i); });
  EXPECT_TRUE(order.empty());
  loop_.settle();
  ASSERT_EQ(order.size(), 200u);
  for (int i = 0; i < 200; ++i) EXPECT_EQ(order[static_cast<size_t>(i)], i);
}

TEST_F(QtRunLoopTest, ADelayedTaskWaitsItsDelayAndDoesNotOvertakeOnAClockFromTheGivenMoment) {
  std::vector<char> order;
  double ranAt = 0;
  double postedAt = loop_.elapsed(), now = loop_.now();
  EXPECT_GE(now, 1000.0);
  EXPECT_LT(now, 1010.0);
  loop_.postMain([&] { order.push_back('a'); ranAt = loop_.elapsed(); }, 0.08);
  loop_.postMain([&] { order.push_back('b'); }, 0);
  loop_.settle();
  EXPECT_EQ(order, std::vector<char>{'b'});  // settling does not move time on
  loop_.runFor(0.15);
  EXPECT_EQ(order, (std::vector<char>{'b', 'a'}));
  EXPECT_GE(ranAt - postedAt, 0.08);
  EXPECT_GE(loop_.now() - now, 0.145) << "the clock follows real time";
}

TEST_F(QtRunLoopTest, BackgroundWorkRunsOffTheMainThreadAndPostsBack) {
  EXPECT_TRUE(loop_.isMainThread());
  std::atomic<bool> offMain{false};
  bool backOnMain = false;
  DispatchQueue::global().async([&] {
    offMain = !RunLoop::current().isMainThread();
    DispatchQueue::main().async([&] { backOnMain = loop_.isMainThread(); });
  });
  loop_.settle();
  EXPECT_TRUE(offMain.load());
  EXPECT_TRUE(backOnMain);
}

TEST_F(QtRunLoopTest, WorkOfOneClassCompletesInPostOrder) {
  std::mutex mutex;
  std::vector<int> order;
  for (int i = 0; i < 50; ++i) {
    DispatchQueue::global(QualityOfService::userInteractive).async([&, i] {
      std::lock_guard lock(mutex);
      order.push_back(i);
    });
  }
  loop_.settle();
  std::lock_guard lock(mutex);
  ASSERT_EQ(order.size(), 50u);
  for (int i = 0; i < 50; ++i) EXPECT_EQ(order[static_cast<size_t>(i)], i);
}

TEST_F(QtRunLoopTest, APostFromAnotherThreadWakesTheLoop) {
  bool ran = false;
  std::thread other([&] { loop_.postMain([&] { ran = true; }, 0); });
  other.join();
  loop_.runFor(0.05);
  EXPECT_TRUE(ran);
}

TEST_F(QtRunLoopTest, AChainOfPostsLeavesRoomForOtherEvents) {
  // Each turn serves only what was waiting when it began, so a self-reposting task does not
  // starve Qt's own events.
  int turns = 0;
  std::function<void()> again = [&] {
    if (++turns < 1000) loop_.postMain(again, 0);
  };
  loop_.postMain(again, 0);
  bool qtEvent = false;
  QMetaObject::invokeMethod(&loop_, [&] { qtEvent = true; }, Qt::QueuedConnection);
  QCoreApplication::processEvents();
  QCoreApplication::processEvents();
  EXPECT_TRUE(qtEvent);
  EXPECT_LT(turns, 1000);
  loop_.settle();
  EXPECT_EQ(turns, 1000);
}

}  // namespace
}  // namespace nimbrel::shell
