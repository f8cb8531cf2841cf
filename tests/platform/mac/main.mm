#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include <string>

namespace {

// Of the contracts that every world is held to, those that need no window of another application, no pointer
// and no keyboard. Everything that is named Mac or Native is of this folder.
constexpr const char* needingNoUser =
    "Mac*:Native*:MainLoopContract.*:SubscriptionContract.*:PropertyListsContract.*:PasteboardContract.*"
    ":ScreenListContract.HasAFirstScreenAtTheOriginOfScreenCoordinates"
    ":ScreenListContract.KeepsEveryVisibleFrameInsideItsScreen"
    ":ScreenListContract.SaysTheSameWhenNothingChanged";

// The pasteboard of whoever runs the tests has his text again afterwards. Untouched, it keeps all it has.
class UsersPasteboard {
 public:
  UsersPasteboard() = default;
  ~UsersPasteboard() {
    if (board_.changeCount == changes_) return;
    [board_ clearContents];
    if (text_ != nil) [board_ setString:text_ forType:NSPasteboardTypeString];
  }
  UsersPasteboard(const UsersPasteboard&) = delete;
  UsersPasteboard& operator=(const UsersPasteboard&) = delete;

 private:
  NSPasteboard* board_ = NSPasteboard.generalPasteboard;
  NSInteger changes_ = board_.changeCount;
  NSString* text_ = [board_ stringForType:NSPasteboardTypeString];
};

}  // namespace

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  if (GTEST_FLAG_GET(filter) == "*") GTEST_FLAG_SET(filter, needingNoUser);
  @autoreleasepool {
    [NSApplication.sharedApplication setActivationPolicy:NSApplicationActivationPolicyProhibited];
    const UsersPasteboard pasteboard;
    return RUN_ALL_TESTS();
  }
}
