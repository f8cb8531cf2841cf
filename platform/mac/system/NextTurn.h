#pragma once

#import <Foundation/Foundation.h>

namespace pellar {

// Runs the block on the next turn of the main loop, in whatever common mode it runs: for what has no port at
// hand to post with. Main thread only.
inline void performNextTurn(void (^block)(void)) {
  CFRunLoopPerformBlock(CFRunLoopGetMain(), kCFRunLoopCommonModes, block);
  CFRunLoopWakeUp(CFRunLoopGetMain());
}

}  // namespace pellar
