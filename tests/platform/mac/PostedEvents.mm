#include "tests/platform/mac/PostedEvents.h"

#import <AppKit/AppKit.h>

#include <algorithm>
#include <cstdlib>

namespace pellar::contract {
namespace {

void post(const CFRef<CGEventRef>& event, CGEventFlags flags = 0) {
  if (!event) return;
  CGEventSetFlags(event.get(), flags);
  CGEventPost(kCGHIDEventTap, event.get());
}

CGPoint fromScreen(ScreenPoint point) {
  return CGPointMake(point.x, NSMaxY(NSScreen.screens.firstObject.frame) - point.y);
}

}  // namespace

PostedEvents::PostedEvents()
    : source_(CFRef<CGEventSourceRef>::adopt(CGEventSourceCreate(kCGEventSourceStateHIDSystemState))) {
  // Otherwise the hardware is deaf for a moment after each of them, and a person at the Mac would notice.
  if (source_) CGEventSourceSetLocalEventsSuppressionInterval(source_.get(), 0);
}

PostedEvents::~PostedEvents() {
  if (leftHeld_) releaseLeft();
}

void PostedEvents::postMouse(CGEventType type, CGMouseButton button, int clickCount) {
  const auto event = CFRef<CGEventRef>::adopt(CGEventCreateMouseEvent(source_.get(), type, pointer_, button));
  if (event) CGEventSetIntegerValueField(event.get(), kCGMouseEventClickState, clickCount);
  post(event);
}

void PostedEvents::movePointer(ScreenPoint point) {
  pointer_ = fromScreen(point);
  postMouse(leftHeld_ ? kCGEventLeftMouseDragged : kCGEventMouseMoved, kCGMouseButtonLeft,
            leftHeld_ ? clickCount_ : 0);
}

// The window server does not count clicks; the hardware's driver does.
void PostedEvents::pressLeft(ScreenPoint point) {
  movePointer(point);
  const auto now = std::chrono::steady_clock::now();
  const bool again = lastPress_ && CGPointEqualToPoint(*lastPress_, pointer_) &&
                     std::chrono::duration<double>(now - lastPressAt_).count() < NSEvent.doubleClickInterval;
  clickCount_ = again ? clickCount_ + 1 : 1;
  lastPress_ = pointer_;
  lastPressAt_ = now;
  leftHeld_ = true;
  postMouse(kCGEventLeftMouseDown, kCGMouseButtonLeft, clickCount_);
}

void PostedEvents::releaseLeft() {
  leftHeld_ = false;
  postMouse(kCGEventLeftMouseUp, kCGMouseButtonLeft, clickCount_);
}

void PostedEvents::clickRight(ScreenPoint point) {
  movePointer(point);
  postMouse(kCGEventRightMouseDown, kCGMouseButtonRight, 1);
  postMouse(kCGEventRightMouseUp, kCGMouseButtonRight, 1);
}

void PostedEvents::clickMiddle(ScreenPoint point) {
  movePointer(point);
  postMouse(kCGEventOtherMouseDown, kCGMouseButtonCenter, 1);
  postMouse(kCGEventOtherMouseUp, kCGMouseButtonCenter, 1);
}

// A wheel turns by few lines at a time.
void PostedEvents::turnWheel(ScreenPoint point, int lines) {
  constexpr int most = 10;
  movePointer(point);
  for (int left = std::abs(lines); left > 0; left -= most) {
    const int step = std::min(left, most) * (lines > 0 ? -1 : 1);
    post(CFRef<CGEventRef>::adopt(
        CGEventCreateScrollWheelEvent2(source_.get(), kCGScrollEventUnitLine, 1, step, 0, 0)));
  }
}

void PostedEvents::pressKey(std::uint16_t keyCode, CGEventFlags flags) {
  for (const bool down : {true, false}) {
    post(CFRef<CGEventRef>::adopt(CGEventCreateKeyboardEvent(source_.get(), keyCode, down)), flags);
  }
}

void PostedEvents::type(std::string_view text) {
  for (const char letter : text) {
    const auto unit = static_cast<UniChar>(static_cast<unsigned char>(letter));
    for (const bool down : {true, false}) {
      const auto event = CFRef<CGEventRef>::adopt(CGEventCreateKeyboardEvent(source_.get(), 0, down));
      // Whatever the keyboard's layout is.
      if (event) CGEventKeyboardSetUnicodeString(event.get(), 1, &unit);
      post(event);
    }
  }
}

}  // namespace pellar::contract
