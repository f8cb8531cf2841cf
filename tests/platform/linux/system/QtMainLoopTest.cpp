#include <QCoreApplication>
#include <QTimer>
#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "platform/linux/system/QtMainLoop.h"
#include "tests/platform/linux/SharedDesktop.h"

namespace pellar::contract {
namespace {

using namespace std::chrono_literals;

class QtMainLoopTest : public ::testing::Test {
 protected:
  QtMainLoopTest() { SharedDesktop::get(); }
  // Runs the toolkit's loop until then.
  bool run(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + 10s;
    QTimer look;
    look.start(5ms);
    while (!condition()) {
      if (std::chrono::steady_clock::now() > end) return false;
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
  }
};

TEST_F(QtMainLoopTest, RunsTheTurnsThatItIsAskedForAndLeavesTheRestToTheLoop) {
  QtMainLoop loop;
  std::string order;
  {
    const QtMainLoop::Turn turn(loop);
    loop.post([&] {
      order += 'a';
      loop.post([&] {
        order += 'c';
        loop.post([&] { order += 'd'; });
      });
    });
    loop.post([&] { order += 'b'; });
    loop.runPosted(2);
    EXPECT_EQ(order, "abc");
  }
  EXPECT_TRUE(run([&] { return order == "abcd"; }));
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
