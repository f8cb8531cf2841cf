#import <AppKit/AppKit.h>

#include <memory>

#include "app/shell/AppDelegate.h"
#include "platform/mac/EditingKeys.h"
#include "platform/mac/MacPlatform.h"

// Hands AppKit's start to ours. Lives as long as the process.
@interface ApplicationDelegate : NSObject <NSApplicationDelegate>
@end

@implementation ApplicationDelegate {
  std::unique_ptr<pellar::MacPlatform> _platform;
  std::unique_ptr<pellar::AppDelegate> _app;
}

- (instancetype)init {
  self = [super init];
  if (self != nil) {
    _platform = std::make_unique<pellar::MacPlatform>();
    _app = std::make_unique<pellar::AppDelegate>(_platform->platform());
  }
  return self;
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
  pellar::installEditingKeys();
  _app->applicationDidFinishLaunching();
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
    delegate = [[ApplicationDelegate alloc] init];
    application.delegate = delegate;
    [application setActivationPolicy:NSApplicationActivationPolicyAccessory];
    [application run];
  }
  return 0;
}
