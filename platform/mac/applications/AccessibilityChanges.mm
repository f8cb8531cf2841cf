#include "platform/mac/applications/AccessibilityChanges.h"

#import <Foundation/Foundation.h>

#include <utility>

@interface AccessibilityChangeObserver : NSObject

- (instancetype)initWithCallback:(std::function<void()>)callback;
- (void)end;

@end

@implementation AccessibilityChangeObserver {
  std::function<void()> _callback;
}

// The name stands in no header; the system has posted it since macOS 10.9 or longer. A program that is not
// active gets such notifications only when it asks for them at once (NSDistributedNotificationCenter.h).
- (instancetype)initWithCallback:(std::function<void()>)callback {
  self = [super init];
  if (self != nil) {
    _callback = std::move(callback);
    [NSDistributedNotificationCenter.defaultCenter
               addObserver:self
                  selector:@selector(changed)
                      name:@"com.apple.accessibility.api"
                    object:nil
        suspensionBehavior:NSNotificationSuspensionBehaviorDeliverImmediately];
  }
  return self;
}

- (void)changed {
  // A copy, since the callback may end the observation.
  const auto callback = _callback;
  if (callback) callback();
}

- (void)end {
  _callback = nullptr;
  [NSDistributedNotificationCenter.defaultCenter removeObserver:self];
}

@end

namespace pellar {

Subscription onAccessibilityChanged(std::function<void()> callback) {
  AccessibilityChangeObserver* observer =
      [[AccessibilityChangeObserver alloc] initWithCallback:std::move(callback)];
  return Subscription([observer] { [observer end]; });
}

}  // namespace pellar
