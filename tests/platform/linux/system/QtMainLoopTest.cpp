#include <QCoreApplication>
#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "platform/linux/system/QtMainLoop.h"
#include "tests/platform/linux/SharedDesktop.h"
#include "tests/platform/linux/ToolkitLoop.h"

namespace pellar::contract {
namespace {

using namespace std::chrono_literals;

class QtMainLoopTest : public ::testing::Test {
 protected:
  QtMainLoopTest() { SharedDesktop::get(); }
  static bool run(const std::function<bool()>& condition) { return test::runToolkitUntil(condition); }
};

// Posts itself again on every turn, and counts how often it ran.
struct Restless {
  explicit Restless(QtMainLoop& loop) : loop_(loop) { run(); }
  int runs = 0;
  bool resting = false;

 private:
  void run() {
    loop_.post([this] {
      ++runs;
      if (!resting) run();
    });
  }
  QtMainLoop& loop_;
};

TEST_F(QtMainLoopTest, ATurnRunsWhatWasPostedAndWhatThatPostsUntilNothingIsLeft) {
  QtMainLoop loop;
  std::string order;
  const QtMainLoop::Turn turn(loop);
  loop.post([&] {
    order += 'a';
    loop.post([&] {
      order += 'c';
      loop.post([&] { order += 'd'; });
    });
  });
  loop.post([&] { order += 'b'; });
  loop.runUntilQuiet();
  EXPECT_EQ(order, "abcd");
}

TEST_F(QtMainLoopTest, ATurnEndsThoughABlockPostsItselfAgainAndTheLoopGoesOnWithIt) {
  QtMainLoop loop;
  Restless block(loop);
  {
    const QtMainLoop::Turn turn(loop);
    loop.runUntilQuiet();
    EXPECT_EQ(block.runs, QtMainLoop::mostTurns);
  }
  EXPECT_TRUE(run([&block] { return block.runs > QtMainLoop::mostTurns; }));
  block.resting = true;
}

TEST_F(QtMainLoopTest, APressWaitsForTheReportAndForTheRefreshThatTheReportAsksFor) {
  QtMainLoop loop;
  std::string order;
  const Subscription press = loop.whenQuiet([&] { order += "press "; });
  loop.post([&] {
    order += "report ";
    loop.post([&] {
      order += "refresh ";
      loop.post([&] { order += "place "; });
    });
  });
  EXPECT_TRUE(run([&] { return order == "report refresh place press "; })) << order;
}

TEST_F(QtMainLoopTest, APressComesThroughThoughTheLoopNeverRests) {
  QtMainLoop loop;
  Restless block(loop);
  std::optional<int> pressed;
  const Subscription press = loop.whenQuiet([&] { pressed = block.runs; });
  EXPECT_TRUE(run([&pressed] { return pressed.has_value(); }));
  EXPECT_EQ(pressed, QtMainLoop::mostTurns);
  block.resting = true;
}

TEST_F(QtMainLoopTest, WhatWaitsForQuietRunsOnceInItsOrderAndNotAfterItIsDropped) {
  QtMainLoop loop;
  std::string order;
  const Subscription first = loop.whenQuiet([&] { order += 'a'; });
  Subscription dropped = loop.whenQuiet([&] { order += 'x'; });
  const Subscription second = loop.whenQuiet([&] { order += 'b'; });
  dropped.cancel();
  bool over = false;
  EXPECT_EQ(order, "") << "never inside the call";
  const Subscription fence = loop.after(20ms, [&over] { over = true; });
  EXPECT_TRUE(run([&over] { return over; }));
  EXPECT_EQ(order, "ab");
}

TEST_F(QtMainLoopTest, ANestedLoopInsideATurnRunsWhatWaitsForQuiet) {
  QtMainLoop loop;
  bool ran = false;
  const QtMainLoop::Turn turn(loop);
  const Subscription waiting = loop.whenQuiet([&ran] { ran = true; });
  EXPECT_TRUE(run([&ran] { return ran; }));
}

TEST_F(QtMainLoopTest, ANestedLoopInsideABlockRunsTheOthers) {
  QtMainLoop loop;
  std::string order;
  bool nested = false;
  loop.post([&] {
    order += 'a';
    nested = run([&] { return order == "ab"; });
    order += 'c';
  });
  loop.post([&] { order += 'b'; });
  EXPECT_TRUE(run([&] { return order == "abc"; }));
  EXPECT_TRUE(nested);
}

TEST_F(QtMainLoopTest, ANestedLoopInsideATurnIsWokenByWhatIsPosted) {
  QtMainLoop loop;
  bool ran = false;
  const QtMainLoop::Turn turn(loop);
  loop.post([&ran] { ran = true; });
  EXPECT_TRUE(run([&ran] { return ran; }));
}

TEST_F(QtMainLoopTest, WaitsLongerThanTheToolkitsTimersCanCount) {
  QtMainLoop loop;
  bool fired = false;
  const auto month = loop.after(std::chrono::hours(24 * 31), [&fired] { fired = true; });
  const auto longest = loop.every(std::chrono::milliseconds::max(), [&fired] { fired = true; });
  bool over = false;
  const auto fence = loop.after(50ms, [&over] { over = true; });
  EXPECT_TRUE(run([&over] { return over; }));
  EXPECT_FALSE(fired);
}

TEST_F(QtMainLoopTest, WhatIsDroppedAfterTheLoopIsHarmless) {
  Subscription timer;
  {
    QtMainLoop loop;
    timer = loop.after(1ms, [] { FAIL() << "the loop is gone"; });
    loop.post([] { FAIL() << "the loop is gone"; });
  }
  timer.cancel();
  QCoreApplication::processEvents();
}

}  // namespace
}  // namespace pellar::contract
