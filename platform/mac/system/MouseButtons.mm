#include "platform/mac/system/MouseButtons.h"

#import <AppKit/AppKit.h>

#include <memory>
#include <utility>

namespace pellar {
namespace {

// In seconds; too short to be noticed after a release.
constexpr NSTimeInterval nextLook = 0.03;

}  // namespace

// A release may go to another program, or to a control that tracks the mouse in a loop of its own, which no
// monitor of events sees (NSEvent.h). So for as long as a button is held it is looked at.
Subscription whenNoButtonIsDown(std::function<void()> callback) {
  if (NSEvent.pressedMouseButtons == 0) {
    callback();
    return {};
  }
  const auto kept = std::make_shared<const std::function<void()>>(std::move(callback));
  NSTimer* timer = [NSTimer timerWithTimeInterval:nextLook
                                          repeats:YES
                                            block:^(NSTimer* fired) {
                                              if (NSEvent.pressedMouseButtons != 0) return;
                                              // The callback may drop the timer, and with it this block.
                                              const auto running = kept;
                                              [fired invalidate];
                                              @autoreleasepool {
                                                (*running)();
                                              }
                                            }];
  [NSRunLoop.mainRunLoop addTimer:timer forMode:NSRunLoopCommonModes];
  return Subscription([timer] { [timer invalidate]; });
}

}  // namespace pellar
