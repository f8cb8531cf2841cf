#include "platform/linux/popups/QtMenus.h"

#include <xcb/xcb.h>

#include <QMenu>
#include <functional>

#include "core/TrueWhile.h"
#include "platform/EventMonitors.h"
#include "platform/ScreenList.h"
#include "platform/linux/popups/QtMenuItems.h"
#include "platform/linux/system/ToolkitPlace.h"
#include "platform/linux/x11/ServerSync.h"

namespace pellar {
namespace {

// A press holds the pointer for the connection that it was told to, which is not the toolkit's. Returns when
// the server has let go of it, so that the menu, which asks over the other connection, gets it.
void releasePointer(const X11Connection& connection) {
  xcb_ungrab_pointer(connection.xcb(), XCB_CURRENT_TIME);
  syncWithServer(connection.xcb());
}

}  // namespace

void QtMenus::popUpContextMenu(const Menu& menu, const MouseEvent& event) {
  if (open_) return;
  std::function<void()> chosen;
  {
    const TrueWhile tracking(open_);
    QMenu native;
    QtMenuItems::fill(native, menu, [&chosen](const std::function<void()>& handler) { chosen = handler; });
    const auto screens = screens_.screens();
    const double height = screens.empty() ? 0 : screens.front().frame.height;
    releasePointer(connection_);
    // A press elsewhere may come before the toolkit has got hold of the pointer, or where it does not.
    const Subscription elsewhere = monitors_.onGlobalMouseDown(&QtMenuItems::closeOpenMenus);
    const AxPoint place{event.screenLocation.x, height - event.screenLocation.y};
    native.exec(ToolkitPlace::of(density_.map().toPixels(AxRect::of(place, {1, 1})).origin()));
  }
  if (chosen) chosen();
}

}  // namespace pellar
