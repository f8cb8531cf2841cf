#import <AppKit/AppKit.h>

#include "platform/mac/system/MacMainLoop.h"
#include "tests/contract/ContractTest.h"

namespace pellar::contract {

using std::chrono::milliseconds;

class MacMainLoopTest : public ContractTest {
 protected:
  // As a menu or a question does: the loop runs in another mode for a while.
  static void runInMode(NSRunLoopMode mode, const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (!condition() && std::chrono::steady_clock::now() < end) {
      CFRunLoopRunInMode((__bridge CFStringRef)mode, 0.005, true);
    }
  }
};

TEST_F(MacMainLoopTest, TimersFireAndPostedBlocksRunWhileAMenuIsTracked) {
  bool posted = false;
  bool fired = false;
  mainLoop().post([&posted] { posted = true; });
  const auto timer = mainLoop().after(milliseconds(20), [&fired] { fired = true; });
  runInMode(NSEventTrackingRunLoopMode, [&] { return posted && fired; });
  EXPECT_TRUE(posted);
  EXPECT_TRUE(fired);
}

TEST_F(MacMainLoopTest, TimersFireAndPostedBlocksRunWhileAQuestionIsOpen) {
  bool posted = false;
  bool fired = false;
  mainLoop().post([&posted] { posted = true; });
  const auto timer = mainLoop().after(milliseconds(20), [&fired] { fired = true; });
  runInMode(NSModalPanelRunLoopMode, [&] { return posted && fired; });
  EXPECT_TRUE(posted);
  EXPECT_TRUE(fired);
}

TEST_F(MacMainLoopTest, APersonWhoWaitsForATimerWaitsASecondLongerAtMost) {
  using std::chrono::hours;
  using std::chrono::seconds;
  EXPECT_EQ(MacMainLoop::tolerance(milliseconds(300)).count(), 0);
  EXPECT_DOUBLE_EQ(MacMainLoop::tolerance(seconds(2)).count(), 0.2);
  EXPECT_EQ(MacMainLoop::tolerance(seconds(60)).count(), 1);
  EXPECT_EQ(MacMainLoop::tolerance(hours(6)).count(), 1);
}

TEST_F(MacMainLoopTest, ABlockThatRunsTheLoopDoesNotHoldUpThoseAfterIt) {
  bool innerRan = false;
  bool seenInside = false;
  mainLoop().post([&] {
    runInMode(NSEventTrackingRunLoopMode, [&] { return innerRan; });
    seenInside = innerRan;
  });
  mainLoop().post([&innerRan] { innerRan = true; });
  ASSERT_TRUE(wait([&innerRan] { return innerRan; }));
  EXPECT_TRUE(seenInside);
}

}  // namespace pellar::contract
