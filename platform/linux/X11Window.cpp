#include "platform/linux/X11Window.h"

namespace pellar {

std::string X11Window::title() const {
  return netName ? *netName : wmName.value_or(std::string());
}

AxPoint X11Window::clientOrigin() const {
  AxPoint origin;
  for (const Link& link : links) {
    origin.x += link.geometry.x + link.geometry.border;
    origin.y += link.geometry.y + link.geometry.border;
  }
  return origin;
}

X11Extents X11Window::decoration() const {
  // The property wins over the frame window, which may be larger than what is seen of it (borders for
  // grabbing).
  if (frameExtents) return *frameExtents;
  if (links.empty()) return {};
  const AxPoint inner = clientOrigin();
  const X11Geometry& outer = links.back().geometry;
  const X11Geometry& client = links.front().geometry;
  const int left = static_cast<int>(inner.x) - outer.x;
  const int top = static_cast<int>(inner.y) - outer.y;
  return {left, outer.width + 2 * outer.border - left - client.width, top,
          outer.height + 2 * outer.border - top - client.height};
}

X11Extents X11Window::edge() const {
  const X11Extents frame = decoration();
  return {frame.left - shadow.left, frame.right - shadow.right, frame.top - shadow.top,
          frame.bottom - shadow.bottom};
}

AxRect X11Window::frame() const {
  if (links.empty()) return {};
  const AxPoint inner = clientOrigin();
  const X11Extents around = edge();
  const X11Geometry& client = links.front().geometry;
  return {inner.x - around.left, inner.y - around.top,
          static_cast<double>(client.width + around.left + around.right),
          static_cast<double>(client.height + around.top + around.bottom)};
}

AxPoint X11Window::requestFor(AxPoint corner) const {
  // A client asks with its frame's corner, edge or centre in mind, as its gravity says (ICCCM 4.1.2.3).
  const X11Extents frame = decoration();
  const int across = frame.left + frame.right;
  const int down = frame.top + frame.bottom;
  AxPoint request{corner.x - shadow.left, corner.y - shadow.top};
  switch (gravity) {
    case XCB_GRAVITY_STATIC:
      request.x += frame.left;
      request.y += frame.top;
      return request;
    case XCB_GRAVITY_NORTH:
    case XCB_GRAVITY_CENTER:
    case XCB_GRAVITY_SOUTH:
      request.x += across / 2;
      break;
    case XCB_GRAVITY_NORTH_EAST:
    case XCB_GRAVITY_EAST:
    case XCB_GRAVITY_SOUTH_EAST:
      request.x += across;
      break;
    default:
      break;
  }
  switch (gravity) {
    case XCB_GRAVITY_WEST:
    case XCB_GRAVITY_CENTER:
    case XCB_GRAVITY_EAST:
      request.y += down / 2;
      break;
    case XCB_GRAVITY_SOUTH_WEST:
    case XCB_GRAVITY_SOUTH:
    case XCB_GRAVITY_SOUTH_EAST:
      request.y += down;
      break;
    default:
      break;
  }
  return request;
}

}  // namespace pellar
