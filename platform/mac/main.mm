#import <AppKit/AppKit.h>

#include <cstdio>
#include <memory>

#include "app/shell/AppDelegate.h"
#include "platform/MainLoop.h"
#include "platform/mac/MacPlatform.h"
#include "platform/mac/desktop/EditingKeys.h"
#include "platform/mac/system/MacUserFolders.h"
#include "platform/shared/system/FolderLock.h"

// Hands AppKit's start to ours. Lives as long as the process.
@interface ApplicationDelegate : NSObject <NSApplicationDelegate>
@end

@implementation ApplicationDelegate {
  std::unique_ptr<pellar::MacPlatform> _platform;
  std::unique_ptr<pellar::AppDelegate> _app;
  id<NSObject> _awake;
}

- (instancetype)init {
  self = [super init];
  if (self != nil) {
    _platform = std::make_unique<pellar::MacPlatform>();
    _app = std::make_unique<pellar::AppDelegate>(_platform->platform());
  }
  return self;
}

// A program that shows nothing for a while is put to App Nap, and wakes up slowly
// (github.com/Hammerspoon/hammerspoon/issues/238). Each key press of the session would wait for that, and
// before the permission is given, while the settings lie over our window, the user himself.
- (void)stayAwake {
  _awake = [NSProcessInfo.processInfo
      beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
                        reason:@"The user's key presses and windows do not wait for Pellar."];
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
  [self stayAwake];
  pellar::installEditingKeys();
  _app->applicationDidFinishLaunching();
}

// Started once more while it runs. The system's request would wait until the menu is closed.
- (BOOL)applicationShouldHandleReopen:(NSApplication*)app hasVisibleWindows:(BOOL)visible {
  pellar::MacPlatform* platform = _platform.get();
  platform->platform().mainLoop.post([platform] { platform->openStatusMenu(); });
  return NO;
}

// Nothing is restored, but AppKit asks.
- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)app {
  return YES;
}

@end

namespace {

// NSApplication holds its delegate weakly.
NSApplication* application;
ApplicationDelegate* delegate;

}  // namespace

int main() {
  @autoreleasepool {
    application = NSApplication.sharedApplication;
    // The system starts a bundle once, unless it is told otherwise (open -n) or there are two copies of it.
    // Both would put a strip over each window and take turns in overwriting one another's state. The list of
    // running applications does not tell whose turn it is: of two that start together each sees the other.
    const pellar::FolderLock state(pellar::macUserFolders().applicationSupport / "Pellar");
    if (state.isAnothers()) {
      std::fputs("Pellar is already running; its menu is in the menu bar.\n", stderr);
      return 0;
    }
    delegate = [[ApplicationDelegate alloc] init];
    application.delegate = delegate;
    [application setActivationPolicy:NSApplicationActivationPolicyAccessory];
    [application run];
  }
  return 0;
}
