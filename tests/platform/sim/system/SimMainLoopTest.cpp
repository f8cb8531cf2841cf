#include <gtest/gtest.h>

#include <chrono>
#include <stdexcept>
#include <vector>

#include "platform/sim/system/SimMainLoop.h"

namespace pellar {

using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::seconds;

TEST(SimMainLoop, StartsAtTheSameMomentEveryTime) {
  const SimMainLoop loop;
  EXPECT_EQ(loop.secondsSince1970(), 1'700'000'000);
  EXPECT_EQ(loop.uptime(), seconds(0));
}

TEST(SimMainLoop, MovesTheClockOnlyWhenTold) {
  SimMainLoop loop;
  bool fired = false;
  const auto timer = loop.after(milliseconds(10), [&fired] { fired = true; });
  loop.runUntilIdle();
  EXPECT_FALSE(fired);
  loop.advance(milliseconds(9));
  EXPECT_FALSE(fired);
  loop.advance(milliseconds(1));
  EXPECT_TRUE(fired);
  EXPECT_EQ(loop.secondsSince1970(), 1'700'000'000.01);
}

TEST(SimMainLoop, StopsAtEachTimerOnItsWay) {
  SimMainLoop loop;
  std::vector<std::chrono::nanoseconds> times;
  const auto timer = loop.every(hours(6), [&] { times.push_back(loop.uptime()); });
  loop.advance(hours(13));
  EXPECT_EQ(times, (std::vector<std::chrono::nanoseconds>{hours(6), hours(12)}));
  EXPECT_EQ(loop.uptime(), hours(13));
}

TEST(SimMainLoop, RunsTheTimersThatATimerStartedOnTheWay) {
  SimMainLoop loop;
  std::chrono::nanoseconds firedAt{0};
  Subscription inner;
  const auto outer = loop.after(
      milliseconds(100), [&] { inner = loop.after(milliseconds(50), [&] { firedAt = loop.uptime(); }); });
  loop.advance(milliseconds(200));
  EXPECT_EQ(firedAt, milliseconds(150));
}

TEST(SimMainLoop, LeavesOutTheTicksMissedWhileTheThreadWasHeldUp) {
  SimMainLoop loop;
  int ticks = 0;
  const auto timer = loop.every(seconds(1), [&ticks] { ++ticks; });
  loop.holdUp(milliseconds(5500));
  loop.runUntilIdle();
  EXPECT_EQ(ticks, 1);
  loop.advance(milliseconds(499));
  EXPECT_EQ(ticks, 1);
  loop.advance(milliseconds(1));
  EXPECT_EQ(ticks, 2) << "at the sixth second, in step with its start";
}

TEST(SimMainLoop, RunsNestedInsideACallback) {
  SimMainLoop loop;
  std::vector<int> ran;
  bool answered = false;
  const auto timer = loop.after(milliseconds(20), [&answered] { answered = true; });
  loop.post([&] {
    ran.push_back(1);
    EXPECT_TRUE(loop.runUntil([&answered] { return answered; }, seconds(1)));
    ran.push_back(3);
  });
  loop.post([&ran] { ran.push_back(2); });
  loop.runUntilIdle();
  EXPECT_EQ(ran, (std::vector{1, 2, 3}));
}

TEST(SimMainLoop, GivesUpWaitingAtTheLimit) {
  SimMainLoop loop;
  EXPECT_FALSE(loop.runUntil([] { return false; }, seconds(3)));
  EXPECT_EQ(loop.uptime(), seconds(3));
}

TEST(SimMainLoop, ReportsAProgramThatNeverComesToRest) {
  SimMainLoop loop;
  std::function<void()> again = [&] { loop.post(again); };
  loop.post(again);
  EXPECT_THROW(loop.runUntilIdle(), std::runtime_error);
}

TEST(SimMainLoop, CountsNothingWhileIdle) {
  SimMainLoop loop;
  const auto timer = loop.after(hours(1), [] {});
  loop.runUntilIdle();
  const auto before = loop.turns();
  loop.advance(seconds(60));
  EXPECT_EQ(loop.turns(), before);
  EXPECT_EQ(loop.activeTimers(), 1U);
}

}  // namespace pellar
