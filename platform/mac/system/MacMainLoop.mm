#include "platform/mac/system/MacMainLoop.h"

#import <Foundation/Foundation.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace pellar {
namespace {

Subscription startTimer(std::chrono::milliseconds interval, bool repeats, MainLoop::Callback tick) {
  const auto kept = std::make_shared<const MainLoop::Callback>(std::move(tick));
  const NSTimeInterval seconds = std::chrono::duration<double>(interval).count();
  NSTimer* timer = [NSTimer timerWithTimeInterval:seconds
                                          repeats:repeats
                                            block:^(NSTimer*) {
                                              // The callback may drop the timer, and with it this block.
                                              const auto running = kept;
                                              @autoreleasepool {
                                                (*running)();
                                              }
                                            }];
  timer.tolerance = repeats ? MacMainLoop::tolerance(interval).count() : 0;
  [NSRunLoop.mainRunLoop addTimer:timer forMode:NSRunLoopCommonModes];
  return Subscription([timer] { [timer invalidate]; });
}

}  // namespace

// A source of our own rather than the main dispatch queue: that queue is serial, so a block that runs a
// nested loop (a menu, a question) would hold up every later block until that loop ends.
MacMainLoop::MacMainLoop() {
  CFRunLoopSourceContext context{};
  context.info = this;
  context.perform = [](void* info) { static_cast<MacMainLoop*>(info)->runPosted(); };
  source_ = CFRef<CFRunLoopSourceRef>::adopt(CFRunLoopSourceCreate(kCFAllocatorDefault, 0, &context));
  CFRunLoopAddSource(CFRunLoopGetMain(), source_.get(), kCFRunLoopCommonModes);
}

MacMainLoop::~MacMainLoop() {
  CFRunLoopSourceInvalidate(source_.get());
}

void MacMainLoop::post(Callback block) {
  {
    const std::lock_guard lock(mutex_);
    waiting_.push_back(std::move(block));
    ++posted_;
  }
  CFRunLoopSourceSignal(source_.get());
  CFRunLoopWakeUp(CFRunLoopGetMain());
}

void MacMainLoop::runPosted() {
  std::uint64_t last = 0;
  {
    const std::lock_guard lock(mutex_);
    last = posted_;
  }
  for (;;) {
    Callback block;
    {
      const std::lock_guard lock(mutex_);
      if (waiting_.empty() || taken_ >= last) return;
      block = std::move(waiting_.front());
      waiting_.pop_front();
      ++taken_;
      // For a loop that the block may run: it goes on where this one stands.
      if (!waiting_.empty()) CFRunLoopSourceSignal(source_.get());
    }
    // NSApplication empties its own pool only when an event comes, which may take hours.
    @autoreleasepool {
      block();
      block = nullptr;
    }
  }
}

Subscription MacMainLoop::after(std::chrono::milliseconds delay, Callback tick) {
  return startTimer(delay, false, std::move(tick));
}

Subscription MacMainLoop::every(std::chrono::milliseconds interval, Callback tick) {
  return startTimer(interval, true, std::move(tick));
}

// What NSTimer.h asks of repeating timers, so that wake-ups of all programs fall together, as far as a person
// who waits for one does not notice.
std::chrono::duration<double> MacMainLoop::tolerance(std::chrono::milliseconds interval) {
  const std::chrono::duration<double> seconds = interval;
  return seconds.count() < 1 ? std::chrono::duration<double>::zero()
                             : std::min(seconds / 10, std::chrono::duration<double>(1));
}

double MacMainLoop::secondsSince1970() const {
  return NSDate.date.timeIntervalSince1970;
}

std::chrono::nanoseconds MacMainLoop::uptime() const {
  return std::chrono::steady_clock::now().time_since_epoch();
}

}  // namespace pellar
