#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>

#include "platform/linux/system/QtMainLoop.h"
#include "platform/linux/system/SideThread.h"
#include "tests/platform/linux/SharedDesktop.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;
using Clock = SideThread::Clock;

// Something that hangs until it is let go.
class Obstacle {
 public:
  void waitHere() {
    std::unique_lock lock(mutex_);
    reached_ = true;
    changed_.notify_all();
    changed_.wait(lock, [this] { return open_; });
  }
  void waitUntilReached() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return reached_; });
  }
  void open() {
    const std::lock_guard lock(mutex_);
    open_ = true;
    changed_.notify_all();
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  bool reached_ = false;
  bool open_ = false;
};

TEST(SideThreadTest, AnswersInTime) {
  SideThread thread;
  EXPECT_FALSE(thread.busy());
  EXPECT_EQ(thread.ask([] { return 42; }, Clock::now() + 10s), 42);
  EXPECT_EQ(thread.ask([] { return std::string("text"); }, Clock::now() + 10s), "text");
}

TEST(SideThreadTest, ALateAnswerIsAbsentAndHarmless) {
  const auto obstacle = std::make_shared<Obstacle>();
  SideThread thread;
  const auto start = Clock::now();
  EXPECT_EQ(thread.ask(
                [obstacle] {
                  obstacle->waitHere();
                  return 42;
                },
                start + 30ms),
            std::nullopt);
  EXPECT_GE(Clock::now() - start, 30ms);
  EXPECT_TRUE(thread.busy());
  obstacle->open();
  EXPECT_EQ(thread.ask([] { return 7; }, Clock::now() + 10s), 7);
}

TEST(SideThreadTest, WhatHasNotBegunInTimeIsDropped) {
  const auto obstacle = std::make_shared<Obstacle>();
  const auto ran = std::make_shared<std::atomic<bool>>(false);
  SideThread thread;
  thread.post([obstacle] { obstacle->waitHere(); });
  obstacle->waitUntilReached();
  EXPECT_FALSE(thread.run([ran] { *ran = true; }, Clock::now() + 20ms));
  obstacle->open();
  EXPECT_TRUE(thread.run([] {}, Clock::now() + 10s));
  EXPECT_FALSE(*ran);
}

TEST(SideThreadTest, TasksRunInTheOrderOfPostingAndTooManyAreRefused) {
  const auto obstacle = std::make_shared<Obstacle>();
  const auto order = std::make_shared<std::string>();
  SideThread thread;
  thread.post([obstacle] { obstacle->waitHere(); });
  obstacle->waitUntilReached();
  for (const char letter : {'a', 'b', 'c'}) EXPECT_TRUE(thread.post([order, letter] { *order += letter; }));
  int more = 0;
  while (more < 10'000 && thread.post([] {})) ++more;
  EXPECT_LT(more, 10'000);
  obstacle->open();
  bool empty = false;
  while (!empty) empty = thread.run([] {}, Clock::now() + 10s);
  EXPECT_EQ(*order, "abc");
}

TEST(SideThreadTest, TheLoopRunsWhileALongAnswerIsWaitedForInIt) {
  contract::SharedDesktop::get();
  QtMainLoop loop;
  const auto obstacle = std::make_shared<Obstacle>();
  SideThread thread;
  const auto timer = loop.after(60ms, [obstacle] { obstacle->open(); });
  EXPECT_EQ(thread.askInLoop(
                [obstacle] {
                  obstacle->waitHere();
                  return 42;
                },
                Clock::now() + 10s, loop),
            42);
  EXPECT_EQ(thread.askInLoop([] { return 7; }, Clock::now() + 10s, loop), 7);
}

TEST(SideThreadTest, ALateAnswerIsAbsentAlsoInTheLoop) {
  contract::SharedDesktop::get();
  QtMainLoop loop;
  const auto obstacle = std::make_shared<Obstacle>();
  SideThread thread;
  const auto start = Clock::now();
  EXPECT_EQ(thread.askInLoop(
                [obstacle] {
                  obstacle->waitHere();
                  return 42;
                },
                start + 60ms, loop),
            std::nullopt);
  EXPECT_GE(Clock::now() - start, 60ms);
  obstacle->open();
  EXPECT_EQ(thread.askInLoop([] { return 7; }, Clock::now() + 10s, loop), 7);
}

TEST(SideThreadTest, AHangingTaskDoesNotHoldUpTheEnd) {
  const auto obstacle = std::make_shared<Obstacle>();
  const auto start = Clock::now();
  {
    SideThread thread;
    thread.post([obstacle] { obstacle->waitHere(); });
    obstacle->waitUntilReached();
  }
  EXPECT_LT(Clock::now() - start, 5s);
  obstacle->open();
}

}  // namespace
}  // namespace pellar
