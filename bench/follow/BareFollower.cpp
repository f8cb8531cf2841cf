#include "bench/follow/BareFollower.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <string>

#include "tests/e2e/XReply.h"

namespace pellar::bench {
namespace {

constexpr int height = 32;
constexpr char className[] = "bare\0Bare";

using e2e::XReply;

class BareFollower {
 public:
  BareFollower() : connection_(xcb_connect(nullptr, nullptr)) {}
  ~BareFollower() { xcb_disconnect(connection_); }
  BareFollower(const BareFollower&) = delete;
  BareFollower& operator=(const BareFollower&) = delete;

  int run() {
    if (xcb_connection_has_error(connection_) != 0) return 1;
    createWindow();
    followActiveWindow();
    xcb_flush(connection_);
    while (const XReply<xcb_generic_event_t> event{xcb_wait_for_event(connection_)}) {
      answer(*event);
      xcb_flush(connection_);
    }
    return 0;
  }

 private:
  xcb_atom_t atom(const std::string& name) {
    const auto cookie =
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection_, cookie, nullptr));
    if (!reply) return XCB_ATOM_NONE;
    return reply->atom;
  }

  void createWindow() {
    const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
    root_ = screen->root;
    active_ = atom("_NET_ACTIVE_WINDOW");
    title_ = atom("_NET_WM_NAME");
    const std::uint32_t rootEvents = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection_, root_, XCB_CW_EVENT_MASK, &rootEvents);

    window_ = xcb_generate_id(connection_);
    const std::uint32_t values[] = {screen->black_pixel, 1};
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, root_, 0, 0, 100, height, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values);
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                        sizeof className, className);
    pen_ = xcb_generate_id(connection_);
    xcb_create_gc(connection_, pen_, window_, XCB_GC_FOREGROUND, &screen->white_pixel);
  }

  void followActiveWindow() {
    const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        connection_, xcb_get_property(connection_, 0, root_, active_, XCB_GET_PROPERTY_TYPE_ANY, 0, 1),
        nullptr));
    if (!reply || reply->format != 32 || reply->value_len == 0) return;
    const auto client = *static_cast<const xcb_window_t*>(xcb_get_property_value(reply.get()));
    if (client == XCB_NONE || client == client_) return;
    client_ = client;

    frame_ = client;
    for (;;) {
      const XReply<xcb_query_tree_reply_t> tree(
          xcb_query_tree_reply(connection_, xcb_query_tree(connection_, frame_), nullptr));
      if (!tree || tree->parent == root_ || tree->parent == XCB_NONE) break;
      frame_ = tree->parent;
    }
    const std::uint32_t clientEvents = XCB_EVENT_MASK_PROPERTY_CHANGE;
    const std::uint32_t frameEvents = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_, client_, XCB_CW_EVENT_MASK, &clientEvents);
    xcb_change_window_attributes(connection_, frame_, XCB_CW_EVENT_MASK, &frameEvents);
    const XReply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, frame_), nullptr));
    if (!geometry) return;
    place(geometry->x, geometry->y, geometry->width + 2 * geometry->border_width);
    xcb_map_window(connection_, window_);
  }

  void place(int x, int y, int width) {
    const std::uint32_t values[] = {static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y - height),
                                    static_cast<std::uint32_t>(width), XCB_STACK_MODE_ABOVE};
    xcb_configure_window(
        connection_, window_,
        XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_STACK_MODE,
        values);
  }

  void answer(const xcb_generic_event_t& event) {
    const auto type = event.response_type & 0x7f;
    if (type == XCB_CONFIGURE_NOTIFY) {
      const auto& configure = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
      if (configure.window != frame_) return;
      const std::uint32_t values[] = {static_cast<std::uint32_t>(configure.x),
                                      static_cast<std::uint32_t>(configure.y - height)};
      xcb_configure_window(connection_, window_, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, values);
    } else if (type == XCB_PROPERTY_NOTIFY) {
      const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
      if (property.window == root_ && property.atom == active_) followActiveWindow();
      if (property.window == client_ && property.atom == title_) {
        const xcb_rectangle_t rectangle{4, 4, 100, height - 8};
        xcb_poly_fill_rectangle(connection_, window_, pen_, 1, &rectangle);
      }
    }
  }

  xcb_connection_t* connection_;
  xcb_window_t root_ = XCB_NONE;
  xcb_window_t window_ = XCB_NONE;
  xcb_gcontext_t pen_ = XCB_NONE;
  xcb_window_t client_ = XCB_NONE;
  xcb_window_t frame_ = XCB_NONE;
  xcb_atom_t active_ = XCB_ATOM_NONE;
  xcb_atom_t title_ = XCB_ATOM_NONE;
};

}  // namespace

int runBareFollower() {
  return BareFollower().run();
}

}  // namespace pellar::bench
