#import <AppKit/AppKit.h>
#include <ApplicationServices/ApplicationServices.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

// Of the contracts that every world is held to, those that need no window of another application, no pointer
// and no keyboard; the build file says which.
constexpr const char* needingNoUser = PELLAR_NEEDING_NO_USER;

// What ctest counts as skipped.
constexpr int skipped = 77;

// The pasteboard of the person who runs the tests has his text again afterwards. Untouched, it keeps all it
// has.
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

// All that a user's hands and other applications' windows take, which one permission covers.
bool mayPlayTheUser() {
  return AXIsProcessTrusted() && CGPreflightPostEventAccess();
}

// Like a program in the menu bar, which the tests stand in for: it has windows, and no place in the Dock.
void joinTheDesktop() {
  [NSApp setActivationPolicy:NSApplicationActivationPolicyAccessory];
  [NSApp finishLaunching];
}

}  // namespace

// With --with-user, for tests that play the user: without the permission none of them is run. Where that must
// not happen, PELLAR_DEMANDS_PERMISSION is set.
int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  const bool withUser = argc > 1 && std::string_view(argv[1]) == "--with-user";
  @autoreleasepool {
    [NSApplication.sharedApplication setActivationPolicy:NSApplicationActivationPolicyProhibited];
    const bool trusted = mayPlayTheUser();
    if (withUser && !trusted) {
      std::puts("skipped: no Accessibility permission");
      return std::getenv("PELLAR_DEMANDS_PERMISSION") != nullptr ? EXIT_FAILURE : skipped;
    }
    const bool isList = GTEST_FLAG_GET(list_tests);
    const bool leavesOut = !isList && !trusted && GTEST_FLAG_GET(filter) == "*";
    if (leavesOut) GTEST_FLAG_SET(filter, needingNoUser);
    if (trusted && !isList) joinTheDesktop();
    const UsersPasteboard pasteboard;
    const int result = RUN_ALL_TESTS();
    if (leavesOut) {
      const auto& all = *::testing::UnitTest::GetInstance();
      std::printf("skipped: no Accessibility permission: %d tests\n",
                  all.total_test_count() - all.test_to_run_count());
    }
    return result;
  }
}
