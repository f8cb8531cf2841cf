#include <chrono>
#include <memory>
#include <thread>
#include <vector>

#include "tests/contract/ContractTest.h"

namespace pellar::contract {

using std::chrono::milliseconds;

class MainLoopContract : public ContractTest {};

TEST_F(MainLoopContract, RunsPostedBlocksInOrderAndNotInsideThePost) {
  std::vector<int> ran;
  mainLoop().post([&ran] { ran.push_back(1); });
  mainLoop().post([&ran] { ran.push_back(2); });
  mainLoop().post([&ran] { ran.push_back(3); });
  EXPECT_TRUE(ran.empty());
  ASSERT_TRUE(wait([&ran] { return ran.size() == 3; }));
  EXPECT_EQ(ran, (std::vector{1, 2, 3}));
}

TEST_F(MainLoopContract, RunsABlockPostedByABlockAfterThoseAlreadyWaiting) {
  std::vector<int> ran;
  mainLoop().post([&] {
    ran.push_back(1);
    mainLoop().post([&ran] { ran.push_back(3); });
    EXPECT_EQ(ran.size(), 1U);
  });
  mainLoop().post([&ran] { ran.push_back(2); });
  ASSERT_TRUE(wait([&ran] { return ran.size() == 3; }));
  EXPECT_EQ(ran, (std::vector{1, 2, 3}));
}

TEST_F(MainLoopContract, TakesBlocksFromOtherThreadsAndRunsThemOnItsOwn) {
  constexpr int perThread = 200;
  int ran = 0;
  bool onMainThread = true;
  const auto mainThread = std::this_thread::get_id();
  constexpr int threadCount = 3;
  std::vector<std::thread> threads;
  threads.reserve(threadCount);
  for (int thread = 0; thread < threadCount; ++thread) {
    threads.emplace_back([&] {
      for (int index = 0; index < perThread; ++index) {
        mainLoop().post([&] {
          ++ran;
          onMainThread = onMainThread && std::this_thread::get_id() == mainThread;
        });
      }
    });
  }
  const bool allRan = wait([&ran] { return ran == threadCount * perThread; });
  for (auto& thread : threads) thread.join();
  EXPECT_TRUE(allRan || wait([&ran] { return ran == threadCount * perThread; }));
  EXPECT_TRUE(onMainThread);
}

TEST_F(MainLoopContract, FiresAOneShotTimerOnceAndNotBeforeItsTime) {
  int ticks = 0;
  const auto start = mainLoop().uptime();
  auto firedAt = start;
  const auto timer = mainLoop().after(milliseconds(60), [&] {
    ++ticks;
    firedAt = mainLoop().uptime();
  });
  EXPECT_EQ(ticks, 0);
  letPass(milliseconds(200));
  EXPECT_EQ(ticks, 1);
  EXPECT_GE(firedAt - start, milliseconds(59));
}

TEST_F(MainLoopContract, FiresATimerWithoutDelayOnALaterTurn) {
  bool fired = false;
  const auto timer = mainLoop().after(milliseconds(0), [&fired] { fired = true; });
  EXPECT_FALSE(fired);
  EXPECT_TRUE(wait([&fired] { return fired; }));
}

TEST_F(MainLoopContract, FiresTimersInTheOrderOfTheirTimes) {
  std::vector<int> fired;
  const auto late = mainLoop().after(milliseconds(90), [&fired] { fired.push_back(2); });
  const auto early = mainLoop().after(milliseconds(30), [&fired] { fired.push_back(1); });
  ASSERT_TRUE(wait([&fired] { return fired.size() == 2; }));
  EXPECT_EQ(fired, (std::vector{1, 2}));
}

TEST_F(MainLoopContract, NeverFiresADroppedTimer) {
  int ticks = 0;
  {
    const auto dropped = mainLoop().after(milliseconds(20), [&ticks] { ++ticks; });
    auto cancelled = mainLoop().every(milliseconds(20), [&ticks] { ++ticks; });
    cancelled.cancel();
  }
  letPass(milliseconds(120));
  EXPECT_EQ(ticks, 0);
}

TEST_F(MainLoopContract, RepeatsATimerUntilItDropsItselfInsideItsOwnTick) {
  int ticks = 0;
  Subscription timer;
  timer = mainLoop().every(milliseconds(15), [&] {
    if (++ticks == 3) timer.cancel();
  });
  ASSERT_TRUE(wait([&ticks] { return ticks == 3; }));
  letPass(milliseconds(100));
  EXPECT_EQ(ticks, 3);
}

TEST_F(MainLoopContract, LetsATickDeleteTheOwnerOfItsTimer) {
  struct Owner {
    std::vector<int> memory = std::vector<int>(100, 7);
    Subscription timer;
  };
  auto owner = std::make_unique<Owner>();
  int sum = 0;
  owner->timer = mainLoop().after(milliseconds(10), [&owner, &sum] {
    owner.reset();
    sum = 1;
  });
  EXPECT_TRUE(wait([&sum] { return sum == 1; }));
  EXPECT_EQ(owner, nullptr);
}

TEST_F(MainLoopContract, DoesNotFireATimerThatAnotherTickDroppedAtTheSameMoment) {
  int ticks = 0;
  Subscription first;
  Subscription second;
  first = mainLoop().after(milliseconds(20), [&] {
    ++ticks;
    second.cancel();
  });
  second = mainLoop().after(milliseconds(20), [&] {
    ++ticks;
    first.cancel();
  });
  letPass(milliseconds(100));
  EXPECT_EQ(ticks, 1);
}

TEST_F(MainLoopContract, StartsATimerInsideATick) {
  bool done = false;
  Subscription inner;
  const auto outer = mainLoop().after(
      milliseconds(5), [&] { inner = mainLoop().after(milliseconds(5), [&done] { done = true; }); });
  EXPECT_TRUE(wait([&done] { return done; }));
}

TEST_F(MainLoopContract, HasClocksThatMoveOnTogether) {
  constexpr double someTimeIn2023 = 1.69e9;
  const double wallStart = mainLoop().secondsSince1970();
  const auto start = mainLoop().uptime();
  EXPECT_GT(wallStart, someTimeIn2023);
  letPass(milliseconds(300));
  const double wall = mainLoop().secondsSince1970() - wallStart;
  const double monotonic = std::chrono::duration<double>(mainLoop().uptime() - start).count();
  EXPECT_GE(monotonic, 0.299);
  EXPECT_NEAR(wall, monotonic, 0.25);
}

}  // namespace pellar::contract
