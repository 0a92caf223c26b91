#include "platform/foundation/ManualRunLoop.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <thread>
#include <vector>

#include "platform/foundation/Date.h"
#include "platform/foundation/DispatchGroup.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/NSTimer.h"

namespace {

class ManualRunLoopTest : public ::testing::Test {
 protected:
  ManualRunLoop loop{100.0};
  std::vector<std::string> log;
};

TEST_F(ManualRunLoopTest, AsyncKeepsFifoOrderOutsideTheCallerAndDelayedBlocksRunAtTheirVirtualMoment) {
  DispatchQueue::main().async([&] {
    log.push_back("a");
    DispatchQueue::main().async([&] { log.push_back("c"); });
  });
  DispatchQueue::main().async([&] { log.push_back("b"); });
  EXPECT_TRUE(log.empty());
  loop.runUntilIdle();
  EXPECT_EQ(log, (std::vector<std::string>{"a", "b", "c"}));
  log.clear();

  DispatchQueue::main().asyncAfter(3.0, [&] { log.push_back("3.0@" + std::to_string(Date::now().timeIntervalSinceReferenceDate)); });
  DispatchQueue::main().asyncAfter(0.5, [&] {
    log.push_back("0.5");
    DispatchQueue::main().asyncAfter(2.0, [&] { log.push_back("2.5"); });
  });
  loop.advance(2.4);
  EXPECT_EQ(log, (std::vector<std::string>{"0.5"}));
  EXPECT_DOUBLE_EQ(loop.now(), 102.4);
  loop.advance(0.6);
  ASSERT_EQ(log.size(), 3u);
  EXPECT_EQ(log[1], "2.5");
  EXPECT_EQ(log[2], "3.0@" + std::to_string(103.0));
}

TEST_F(ManualRunLoopTest, BackgroundWorkWaitsUntilPumpedInTheChosenOrder) {
  DispatchQueue::global(QualityOfService::userInteractive).async([&] {
    EXPECT_FALSE(loop.isMainThread());
    log.push_back("first");
  });
  DispatchQueue::global(QualityOfService::background).async([&] { log.push_back("second"); });
  loop.runMainUntilIdle();
  EXPECT_TRUE(log.empty());
  ASSERT_EQ(loop.pendingBackgroundCount(), 2u);
  EXPECT_EQ(loop.backgroundQos(1), QualityOfService::background);
  loop.runBackgroundTask(1);
  loop.runBackgroundTask(0);
  EXPECT_EQ(log, (std::vector<std::string>{"second", "first"}));
  EXPECT_TRUE(loop.isMainThread());
}

TEST_F(ManualRunLoopTest, GroupNotifiesOneTurnAfterAllWorkHasLeftEvenWhenEmptyAndAnUnbalancedLeaveEndsTheProcess) {
  DispatchGroup empty;
  empty.notify(DispatchQueue::main(), [&] { log.push_back("empty"); });
  DispatchGroup group;
  group.enter();
  group.enter();
  group.notify(DispatchQueue::main(), [&] { log.push_back("done"); });
  group.leave();
  EXPECT_TRUE(log.empty());
  loop.runUntilIdle();
  EXPECT_EQ(log, (std::vector<std::string>{"empty"}));
  group.leave();
  EXPECT_EQ(log.size(), 1u) << "the notification is one turn later";
  loop.runUntilIdle();
  EXPECT_EQ(log, (std::vector<std::string>{"empty", "done"}));

  EXPECT_DEATH(
      {
        DispatchGroup group;
        group.leave();
      },
      "Fatal error: Unbalanced call to dispatch_group_leave\\(\\)");
}

TEST_F(ManualRunLoopTest, TimersRepeatUntilInvalidatedOrFireOnceAndCanBeCancelled) {
  int repeated = 0, fired = 0;
  auto repeating = NSTimer::scheduledTimerWithTimeInterval(1.0, true, [&](NSTimer& t) {
    if (++repeated == 3) t.invalidate();
  });
  auto once = NSTimer::scheduledTimerWithTimeInterval(1.55, false, [&](NSTimer&) { ++fired; });
  NSTimer::scheduledTimerWithTimeInterval(1.0, false, [&](NSTimer&) { fired += 100; })->invalidate();
  loop.advance(1.54);
  EXPECT_EQ(fired, 0);
  loop.advance(0.02);
  EXPECT_EQ(fired, 1);
  EXPECT_FALSE(once->isValid());
  loop.advance(10);
  EXPECT_EQ(fired, 1);
  EXPECT_EQ(repeated, 3);
  EXPECT_FALSE(repeating->isValid());
}
TEST_F(ManualRunLoopTest, AdvanceRunsWorkThatLandsExactlyOnTheTarget) {
  // Given a task at 0.1 s that schedules one 0.2 s later, and a task at the target that posts more
  DispatchQueue::main().asyncAfter(0.1, [&] {
    DispatchQueue::main().asyncAfter(0.2, [&] { log.push_back("chained@0.3"); });
  });
  DispatchQueue::main().asyncAfter(0.3, [&] {
    log.push_back("at0.3");
    DispatchQueue::main().async([&] { log.push_back("posted@0.3"); });
  });
  DispatchQueue::main().asyncAfter(0.30001, [&] { log.push_back("late"); });
  // When time moves exactly to 0.3 s
  loop.advance(0.3);
  // Then everything due at 0.3 s ran, in posting order, and nothing later did
  EXPECT_EQ(log, (std::vector<std::string>{"at0.3", "chained@0.3", "posted@0.3"}));
  EXPECT_EQ(loop.pendingMainCount(), 1u);
}

TEST_F(ManualRunLoopTest, ElapsedTimeAddsUpExactlyOverManySmallSteps) {
  struct Row {
    double step;
    int count;
    double total;
  };
  for (const Row& row : {Row{0.1, 10, 1.0}, Row{0.01, 100, 1.0}, Row{0.001, 3000, 3.0},
                         Row{0.0005, 2000, 1.0}, Row{0.15, 20, 3.0}}) {
    ManualRunLoop local(0);
    for (int i = 0; i < row.count; ++i) local.advance(row.step);
    EXPECT_EQ(local.elapsed(), row.total) << row.count << " steps of " << row.step;
  }
}

TEST_F(ManualRunLoopTest, ADeadlineReachedBySmallStepsFires) {
  // A 1.76 s deadline (a status overlay's display time) reached in 0.01 s steps fires on the
  // 176th step, not one later
  bool fired = false;
  DispatchQueue::main().asyncAfter(21 * 0.06 + 0.5, [&] { fired = true; });
  for (int i = 0; i < 175; ++i) loop.advance(0.01);
  EXPECT_FALSE(fired);
  loop.advance(0.01);
  EXPECT_TRUE(fired);
}

TEST_F(ManualRunLoopTest, DelayedBackgroundWorkJoinsItsQueueOnlyWhenDueWithItsQualityOfService) {
  bool ranOnMain = true;
  std::vector<QualityOfService> queued;
  DispatchQueue::global(QualityOfService::background).asyncAfter(1.0, [&] {
    ranOnMain = loop.isMainThread();
    log.push_back("background");
  });
  // Main work due at the same moment runs before background work is pumped: it sees the queue.
  DispatchQueue::main().asyncAfter(1.0, [&] {
    for (size_t i = 0; i < loop.pendingBackgroundCount(); ++i) queued.push_back(loop.backgroundQos(i));
  });
  loop.advance(0.999);
  EXPECT_EQ(loop.pendingBackgroundCount(), 0u);
  loop.runMainUntilIdle();
  loop.advance(0.001);
  EXPECT_EQ(queued, (std::vector<QualityOfService>{QualityOfService::background}));
  EXPECT_EQ(log, (std::vector<std::string>{"background"}));
  EXPECT_FALSE(ranOnMain);
}
TEST_F(ManualRunLoopTest, OtherThreadsPostInTheirOwnOrderAndLeaveAGroupThatNotifiesOnce) {
  constexpr int kThreads = 4, kEach = 100;
  std::vector<std::vector<int>> seen(kThreads);
  DispatchGroup group;
  int notified = 0;
  for (int i = 0; i < kThreads * kEach; ++i) group.enter();
  group.notify(DispatchQueue::main(), [&] { ++notified; });
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&seen, &group, t] {
      for (int i = 0; i < kEach; ++i) {
        DispatchQueue::main().async([&seen, t, i] { seen[t].push_back(i); });
        group.leave();
      }
    });
  }
  for (auto& th : threads) th.join();
  EXPECT_EQ(notified, 0);
  loop.runUntilIdle();
  EXPECT_EQ(notified, 1);
  EXPECT_EQ(group.count(), 0);
  for (int t = 0; t < kThreads; ++t) {
    ASSERT_EQ(seen[t].size(), static_cast<size_t>(kEach));
    EXPECT_TRUE(std::is_sorted(seen[t].begin(), seen[t].end()));
  }
}

}  // namespace
