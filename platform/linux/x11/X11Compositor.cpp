#include "platform/linux/x11/X11Compositor.h"

#include <xcb/xfixes.h>

#include <string>

#include "platform/linux/x11/ScreenNumber.h"
#include "platform/linux/x11/XcbReply.h"

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
  const std::string name = "_NET_WM_CM_S" + std::to_string(screenNumber(connection, screen));
  const auto atomCookie =
      xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
  if (const xcb_visualid_t translucent = translucentVisual(screen); translucent != XCB_NONE) {
    depth_ = 32;
    visual_ = translucent;
    colormap_ = xcb_generate_id(connection);
    xcb_create_colormap(connection, XCB_COLORMAP_ALLOC_NONE, colormap_, screen.root, visual_);
  } else {
    colormap_ = screen.default_colormap;
  }

  if (const auto atom = owned(xcb_intern_atom_reply(connection, atomCookie, nullptr)))
    selection_ = atom->atom;
  const auto ownerCookie = xcb_get_selection_owner(connection, selection_);
  const auto* xfixes = xcb_get_extension_data(connection, &xcb_xfixes_id);
  if (xfixes != nullptr && xfixes->present != 0) {
    const auto version = owned(xcb_xfixes_query_version_reply(
        connection, xcb_xfixes_query_version(connection, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION),
        nullptr));
    if (version) {
      selectionEvent_ = static_cast<std::uint8_t>(xfixes->first_event + XCB_XFIXES_SELECTION_NOTIFY);
      xcb_xfixes_select_selection_input(connection, screen.root, selection_,
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                            XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                            XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    }
  }
  if (const auto owner = owned(xcb_get_selection_owner_reply(connection, ownerCookie, nullptr)))
    running_ = owner->owner != XCB_NONE;
}

X11Compositor::~X11Compositor() {
  if (depth_ == 32) xcb_free_colormap(connection_, colormap_);
}

bool X11Compositor::handle(const xcb_generic_event_t& event) {
  if (selectionEvent_ == 0 || (event.response_type & 0x7fU) != selectionEvent_) return false;
  const auto& change = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
  if (change.selection != selection_) return false;
  const bool before = blends();
  running_ = change.subtype == XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER && change.owner != XCB_NONE;
  return blends() != before;
}

}  // namespace pellar
