#include "platform/mac/popups/MacMenus.h"

#include <memory>
#include <utility>

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
  if (std::exchange(open_, true)) return;
  const auto choice = std::make_shared<Choice>();
  NSMenu* native = nativeMenu(menu, [choice](const std::function<void()>& handler) {
    if (choice->tracking) {
      choice->handler = handler;
    } else if (handler) {
      handler();
    }
  });
  const MacPanel* panel = panels_.panelAt(event.screenLocation);
  NSWindow* window = panel != nullptr ? panel->native() : nil;
  NSEvent* press = window != nil ? pressAt(event.screenLocation, window) : nil;
  NSView* anchor = window.contentView;
  if (press != nil && anchor != nil) {
    [NSMenu popUpContextMenu:native withEvent:press forView:anchor];
  } else {
    [native popUpMenuPositioningItem:nil atLocation:toNSPoint(event.screenLocation) inView:nil];
  }
  choice->tracking = false;
  open_ = false;
  if (choice->handler) choice->handler();
}

}  // namespace pellar
