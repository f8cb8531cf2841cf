#include "platform/linux/x11/X11Compositor.h"

#include <xcb/xfixes.h>

#include "platform/linux/x11/EventType.h"
#include "platform/linux/x11/X11Selection.h"

namespace pellar {
namespace {

// A 32-bit true-colour visual; 0 when the screen has none.
xcb_visualid_t translucentVisual(const xcb_screen_t& screen) {
  for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem > 0; xcb_depth_next(&depth)) {
    if (depth.data->depth != 32) continue;
    for (auto visual = xcb_depth_visuals_iterator(depth.data); visual.rem > 0; xcb_visualtype_next(&visual)) {
      if (visual.data->_class == XCB_VISUAL_CLASS_TRUE_COLOR && visual.data->red_mask == 0xff0000)
        return visual.data->visual_id;
    }
  }
  return XCB_NONE;
}

}  // namespace

X11Compositor::X11Compositor(xcb_connection_t* connection, const xcb_screen_t& screen)
    : connection_(connection), depth_(screen.root_depth), visual_(screen.root_visual) {
  if (const xcb_visualid_t translucent = translucentVisual(screen); translucent != XCB_NONE) {
    depth_ = 32;
    visual_ = translucent;
    colormap_ = xcb_generate_id(connection);
    xcb_create_colormap(connection, XCB_COLORMAP_ALLOC_NONE, colormap_, screen.root, visual_);
  } else {
    colormap_ = screen.default_colormap;
  }
  selection_ = X11Selection::ofScreen(connection, screen, "_NET_WM_CM_S");
  selectionEvent_ = X11Selection::follow(connection, screen.root, selection_);
  running_ = X11Selection::owner(connection, selection_) != XCB_NONE;
}

X11Compositor::~X11Compositor() {
  if (depth_ == 32) xcb_free_colormap(connection_, colormap_);
}

bool X11Compositor::handle(const xcb_generic_event_t& event) {
  if (selectionEvent_ == 0 || eventType(event) != selectionEvent_) return false;
  const auto& change = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
  if (change.selection != selection_) return false;
  const bool before = blends();
  running_ = change.subtype == XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER && change.owner != XCB_NONE;
  return blends() != before;
}

}  // namespace pellar
