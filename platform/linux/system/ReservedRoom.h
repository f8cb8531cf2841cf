#pragma once

#include "platform/linux/x11/X11Window.h"

namespace pellar {

// Takes from `area`, the free part of a monitor, what a window says that it reserves at the edges of the root
// (_NET_WM_STRUT_PARTIAL, else _NET_WM_STRUT). What would leave nothing of the monitor is not taken.
void takeReservedRoom(RootRect& area, const X11Window& window, const RootRect& monitor, const RootRect& root);

}  // namespace pellar
