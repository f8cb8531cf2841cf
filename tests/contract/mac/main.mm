#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include <string>

namespace {

// Of the contracts that every world is held to, those that need no window of another application, no pointer
// and no keyboard. Everything that is named Mac or Native is of this folder.
constexpr const char* needingNoUser =
    "Mac*:Native*:MainLoopContract.*:SubscriptionContract.*:PropertyListsContract.*"
    ":ScreenListContract.HasAFirstScreenAtTheOriginOfScreenCoordinates"
    ":ScreenListContract.KeepsEveryVisibleFrameInsideItsScreen"
    ":ScreenListContract.SaysTheSameWhenNothingChanged";

}  // namespace

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  if (GTEST_FLAG_GET(filter) == "*") GTEST_FLAG_SET(filter, needingNoUser);
  @autoreleasepool {
    [NSApplication.sharedApplication setActivationPolicy:NSApplicationActivationPolicyProhibited];
    return RUN_ALL_TESTS();
  }
}
