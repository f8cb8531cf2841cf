#include "platform/mac/applications/MacElementObserver.h"

#import <Foundation/Foundation.h>

#include <utility>

#include "platform/mac/applications/AttributeValues.h"
#include "platform/mac/system/Conversions.h"

namespace pellar {
namespace {

// While a menu is tracked or a question is open, the main run loop runs in other modes: reports wait until
// it is back, so that nothing changes under what the user is choosing in.
const CFRunLoopMode reportMode = kCFRunLoopDefaultMode;

}  // namespace

MacElementObserver::MacElementObserver(CFRef<AXObserverRef> observer, std::function<void()> onNotification)
    : onNotification_(std::make_shared<const std::function<void()>>(std::move(onNotification))),
      observer_(std::move(observer)) {}

std::unique_ptr<MacElementObserver> MacElementObserver::make(ProcessId pid,
                                                             std::function<void()> onNotification) {
  const AXObserverCallback callback = [](AXObserverRef observer, AXUIElementRef, CFStringRef, void* context) {
    if (context == nullptr) return;
    // The callback may drop the observer that is calling.
    const auto running = static_cast<const MacElementObserver*>(context)->onNotification_;
    const auto kept = CFRef<AXObserverRef>::retain(observer);
    @autoreleasepool {
      (*running)();
    }
  };
  AXObserverRef created = nullptr;
  const AXError error = AXObserverCreate(pid, callback, &created);
  auto observer = CFRef<AXObserverRef>::adopt(created);
  if (error != kAXErrorSuccess || !observer) return nullptr;
  std::unique_ptr<MacElementObserver> made(
      new MacElementObserver(std::move(observer), std::move(onNotification)));
  CFRunLoopAddSource(CFRunLoopGetMain(), AXObserverGetRunLoopSource(made->observer_.get()), reportMode);
  return made;
}

// Off the loop nothing is delivered any more, also what the application has sent already.
MacElementObserver::~MacElementObserver() {
  CFRunLoopRemoveSource(CFRunLoopGetMain(), AXObserverGetRunLoopSource(observer_.get()), reportMode);
}

// An application that is still launching refuses each registration with kAXErrorCannotComplete;
// github.com/pilyang/vim-action/issues/71 saw it in each of three applications started cold.
// NSRunningApplication.finishedLaunching does not tell (github.com/lwouis/alt-tab-macos/issues/117). An
// element that is gone (kAXErrorInvalidUIElement) hears nothing either. Without the permission everything is
// refused with kAXErrorAPIDisabled, and it may be given back.
Registration MacElementObserver::add(const Element& element, std::string_view notification) {
  const AXError error = AXObserverAddNotification(observer_.get(), MacElement::native(element),
                                                  (__bridge CFStringRef)toNSString(notification), this);
  switch (error) {
    case kAXErrorSuccess:
    case kAXErrorNotificationAlreadyRegistered:
      return Registration::made;
    case kAXErrorInvalidUIElement:
      return Registration::gone;
    case kAXErrorCannotComplete:
      return Registration::notListening;
    case kAXErrorAPIDisabled:
      // One that answers so while the permission is held is not asked again at each refresh.
      return AXIsProcessTrusted() ? Registration::refused : Registration::notListening;
    default:
      return Registration::refused;
  }
}

// Of a window that is gone there is nothing to take back, which the system says at once.
void MacElementObserver::remove(const Element& element, std::string_view notification) {
  AXObserverRemoveNotification(observer_.get(), MacElement::native(element),
                               (__bridge CFStringRef)toNSString(notification));
}

}  // namespace pellar
