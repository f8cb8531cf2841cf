#include "platform/mac/input/MacEventMonitors.h"

#include <memory>
#include <utility>

#include "platform/mac/panel/MacPanel.h"
#include "platform/mac/panel/MacPanelFactory.h"
#include "platform/mac/system/Conversions.h"
#include "platform/mac/system/MouseButtons.h"

namespace pellar {
namespace {

constexpr NSEventMask mouseDowns = NSEventMaskLeftMouseDown | NSEventMaskRightMouseDown;

// An event without a window has its place on the screen already.
ScreenPoint screenLocation(NSEvent* event) {
  const NSPoint place = event.locationInWindow;
  return fromNSPoint<ScreenSpace>(event.window != nil ? [event.window convertPointToScreen:place] : place);
}

// A monitor that has been removed is not called again, but must not be removed twice.
Subscription subscription(id monitor) {
  if (monitor == nil) return {};
  return Subscription([monitor] { [NSEvent removeMonitor:monitor]; });
}

}  // namespace

Subscription MacEventMonitors::onGlobalMouseDown(std::function<void()> callback) {
  const auto kept = std::make_shared<const std::function<void()>>(std::move(callback));
  return subscription([NSEvent addGlobalMonitorForEventsMatchingMask:mouseDowns
                                                             handler:^(NSEvent*) {
                                                               // The callback may remove the monitor.
                                                               const auto running = kept;
                                                               (*running)();
                                                             }]);
}

Subscription MacEventMonitors::onLocalMouseDown(std::function<void(const ObservedClick&)> callback) {
  const auto kept = std::make_shared<const std::function<void(const ObservedClick&)>>(std::move(callback));
  const MacPanelFactory* panels = &panels_;
  auto presses = std::make_shared<Subscription>(panels_.onAccessiblePress([kept](const ObservedClick& press) {
    const auto running = kept;
    (*running)(press);
  }));
  auto clicks = std::make_shared<Subscription>(
      subscription([NSEvent addLocalMonitorForEventsMatchingMask:mouseDowns
                                                         handler:^NSEvent*(NSEvent* event) {
                                                           const auto running = kept;
                                                           (*running)({.panel = panels->panelOf(event.window),
                                                                       .location = screenLocation(event)});
                                                           return event;
                                                         }]));
  return Subscription([presses, clicks] {
    presses->cancel();
    clicks->cancel();
  });
}

Subscription MacEventMonitors::onceButtonsAreUp(std::function<void()> callback) {
  if (NSEvent.pressedMouseButtons == 0) return {};
  return whenNoButtonIsDown(std::move(callback));
}

}  // namespace pellar
