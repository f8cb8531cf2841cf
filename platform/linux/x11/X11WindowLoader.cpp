#include "platform/linux/x11/X11WindowLoader.h"

#include "platform/linux/x11/X11Property.h"

namespace pellar {
namespace {

// No window manager nests its frames deeper.
constexpr int deepestFrame = 8;

void select(X11Connection& connection, xcb_window_t window, std::uint32_t events) {
  xcb_change_window_attributes(connection.xcb(), window, XCB_CW_EVENT_MASK, &events);
}

X11Geometry geometryOf(const xcb_get_geometry_reply_t& reply) {
  return {reply.x, reply.y, reply.width, reply.height, reply.border_width};
}

}  // namespace

std::vector<X11Window> X11WindowLoader::load(const std::vector<xcb_window_t>& ids) {
  std::vector<std::vector<xcb_get_property_cookie_t>> cookies;
  for (const xcb_window_t id : ids) {
    // Before the reads, so that no change between the two is missed.
    select(connection_, id, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    auto& each = cookies.emplace_back();
    for (const X11Property property : allX11Properties)
      each.push_back(requestX11Property(connection_, id, property));
  }
  std::vector<X11Window> windows;
  windows.reserve(ids.size());
  for (std::size_t index = 0; index < ids.size(); ++index) {
    X11Window& window = windows.emplace_back();
    window.id = ids[index];
    auto cookie = cookies[index].begin();
    for (const X11Property property : allX11Properties) {
      const XcbReply<xcb_get_property_reply_t> reply(
          xcb_get_property_reply(connection_.xcb(), *cookie++, nullptr));
      applyX11Property(window, property, reply.get(), connection_.atoms());
    }
  }
  std::vector<X11Window*> all;
  all.reserve(windows.size());
  for (X11Window& window : windows) all.push_back(&window);
  loadLinks(all);
  std::erase_if(windows, [](const X11Window& window) { return window.links.empty(); });
  return windows;
}

void X11WindowLoader::loadLinks(const std::vector<X11Window*>& windows) {
  struct Step {
    X11Window* window;
    xcb_window_t next;
    xcb_get_geometry_cookie_t geometry{};
    xcb_query_tree_cookie_t tree{};
  };
  std::vector<Step> steps;
  for (X11Window* window : windows) {
    window->links.clear();
    steps.push_back({window, window->id});
  }
  for (int depth = 0; depth < deepestFrame && !steps.empty(); ++depth) {
    for (Step& step : steps) {
      if (step.next != step.window->id) select(connection_, step.next, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
      step.geometry = xcb_get_geometry(connection_.xcb(), step.next);
      step.tree = xcb_query_tree(connection_.xcb(), step.next);
    }
    for (Step& step : steps) {
      const XcbReply<xcb_get_geometry_reply_t> geometry(
          xcb_get_geometry_reply(connection_.xcb(), step.geometry, nullptr));
      const XcbReply<xcb_query_tree_reply_t> tree(
          xcb_query_tree_reply(connection_.xcb(), step.tree, nullptr));
      if (!geometry || !tree) {
        step.window->links.clear();
        step.next = XCB_WINDOW_NONE;
        continue;
      }
      step.window->links.push_back({step.next, geometryOf(*geometry)});
      step.next =
          tree->parent == connection_.root() ? static_cast<xcb_window_t>(XCB_WINDOW_NONE) : tree->parent;
    }
    std::erase_if(steps, [](const Step& step) { return step.next == XCB_WINDOW_NONE; });
  }
}

void X11WindowLoader::release(xcb_window_t id) {
  select(connection_, id, XCB_EVENT_MASK_NO_EVENT);
}

}  // namespace pellar
