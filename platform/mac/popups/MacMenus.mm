#include "platform/mac/popups/MacMenus.h"

#include <memory>

#include "core/TrueWhile.h"
#include "platform/mac/panel/MacPanel.h"
#include "platform/mac/panel/MacPanelFactory.h"
#import "platform/mac/popups/NativeMenu.h"
#include "platform/mac/system/Conversions.h"

namespace pellar {
namespace {

// A press at a place in a window, for AppKit to put the menu there.
NSEvent* pressAt(ScreenPoint place, NSWindow* window) {
  return [NSEvent mouseEventWithType:NSEventTypeRightMouseDown
                            location:[window convertPointFromScreen:toNSPoint(place)]
                       modifierFlags:0
                           timestamp:NSProcessInfo.processInfo.systemUptime
                        windowNumber:window.windowNumber
                             context:nil
                         eventNumber:0
                          clickCount:1
                            pressure:1];
}

// What the user chose in one menu. The tracking of the menu ends before the handler runs, so that the handler
// may show the next menu; a choice that comes later than that is handled at once.
struct Choice {
  std::function<void()> handler;
  bool tracking = true;
};

}  // namespace

void MacMenus::popUpContextMenu(const Menu& menu, const MouseEvent& event) {
  if (open_) return;
  const auto choice = std::make_shared<Choice>();
  NSMenu* native = nativeMenu(menu, [choice](const std::function<void()>& handler) {
    if (choice->tracking) {
      choice->handler = handler;
    } else if (handler) {
      handler();
    }
  });
  {
    const TrueWhile tracking(open_);
    track(native, event.screenLocation);
  }
  choice->tracking = false;
  if (choice->handler) choice->handler();
}

void MacMenus::track(NSMenu* native, ScreenPoint place) const {
  const MacPanel* panel = panels_.panelAt(place);
  NSWindow* window = panel != nullptr ? panel->native() : nil;
  NSEvent* press = window != nil ? pressAt(place, window) : nil;
  NSView* anchor = window.contentView;
  if (press != nil && anchor != nil) {
    [NSMenu popUpContextMenu:native withEvent:press forView:anchor];
  } else {
    [native popUpMenuPositioningItem:nil atLocation:toNSPoint(place) inView:nil];
  }
}

}  // namespace pellar
