#import <AppKit/AppKit.h>

#include <cstdio>
#include <memory>

#include "app/shell/AlreadyRunning.h"
#include "app/shell/AppDelegate.h"
#include "core/FileSizeLimit.h"
#include "platform/MainLoop.h"
#include "platform/mac/MacPlatform.h"
#include "platform/mac/desktop/EditingKeys.h"
#include "platform/mac/system/MacUserFolders.h"
#include "platform/shared/system/FolderLock.h"

namespace {

NSString* const showItselfRequest = @"app.pellar.Pellar.showItself";

}  // namespace

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
  // Another copy of the bundle, or one started by "open -n", is a process of its own and asks this way.
  // Without this behaviour the centre keeps the request until the application is active
  // (NSDistributedNotificationCenter.h).
  [NSDistributedNotificationCenter.defaultCenter
             addObserver:self
                selector:@selector(showItself)
                    name:showItselfRequest
                  object:nil
      suspensionBehavior:NSNotificationSuspensionBehaviorDeliverImmediately];
}

// Started once more while it runs.
- (BOOL)applicationShouldHandleReopen:(NSApplication*)app hasVisibleWindows:(BOOL)visible {
  [self showItself];
  return NO;
}

// The system's request would wait until the menu is closed.
- (void)showItself {
  pellar::AppDelegate* program = _app.get();
  _platform->platform().mainLoop.post([program] { program->showItself(); });
}

// Nothing is restored, but AppKit asks.
- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)app {
  return YES;
}

@end

// The delegate of a second copy, which only says so.
@interface SecondCopyDelegate : NSObject <NSApplicationDelegate>
@end

@implementation SecondCopyDelegate {
  std::unique_ptr<pellar::MacPlatform> _platform;
  std::unique_ptr<pellar::AlreadyRunning> _notice;
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
  _platform = std::make_unique<pellar::MacPlatform>();
  _notice = std::make_unique<pellar::AlreadyRunning>(_platform->platform(), [] {
    [NSDistributedNotificationCenter.defaultCenter postNotificationName:showItselfRequest
                                                                 object:nil
                                                               userInfo:nil
                                                     deliverImmediately:YES];
  });
  _notice->show();
}

// Nothing is restored, but AppKit asks.
- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)app {
  return YES;
}

@end

namespace {

// NSApplication holds its delegate weakly.
NSApplication* application;
id<NSApplicationDelegate> delegate;

}  // namespace

int main() {
  pellar::FileSizeLimit::makeAnError();
  @autoreleasepool {
    application = NSApplication.sharedApplication;
    // The system starts a bundle once, unless it is told otherwise (open -n) or there are two copies of it.
    // Both would put a strip over each window and take turns in overwriting one another's state. The list of
    // running applications does not tell whose turn it is: of two that start together each sees the other.
    const pellar::FolderLock state(pellar::macUserFolders().applicationSupport / "Pellar");
    if (state.isAnothers()) {
      std::fputs("Pellar is already running; its menu is in the menu bar.\n", stderr);
      delegate = [[SecondCopyDelegate alloc] init];
    } else {
      delegate = [[ApplicationDelegate alloc] init];
    }
    application.delegate = delegate;
    [application setActivationPolicy:NSApplicationActivationPolicyAccessory];
    [application run];
  }
  return 0;
}
