#include "platform/linux/x11/X11Window.h"

#include <algorithm>
#include <cmath>

namespace pellar {

std::string X11Window::title() const {
  return netName ? *netName : wmName.value_or(std::string());
}

RootPoint X11Window::clientOrigin() const {
  RootPoint origin;
  for (const Link& link : links) {
    origin.x += link.geometry.x + link.geometry.border;
    origin.y += link.geometry.y + link.geometry.border;
  }
  return origin;
}

X11Extents X11Window::decoration() const {
  if (links.empty()) return {};
  // The property wins over the frame window, which may be larger than what is seen of it (borders for
  // grabbing). But a window manager that takes a frame away may leave the property behind.
  if (frameExtents && links.size() > 1) return *frameExtents;
  const RootPoint inner = clientOrigin();
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

RootRect X11Window::frame() const {
  if (links.empty()) return {};
  const RootPoint inner = clientOrigin();
  const X11Extents around = edge();
  const X11Geometry& client = links.front().geometry;
  return {inner.x - around.left, inner.y - around.top,
          static_cast<double>(client.width + around.left + around.right),
          static_cast<double>(client.height + around.top + around.bottom)};
}

Size X11Window::shaped(Size frame) const {
  if (!aspect) return frame;
  const X11Extents around = edge();
  const Size rest{around.left + around.right + aspect->base.width,
                  around.top + around.bottom + aspect->base.height};
  const double width = frame.width - rest.width;
  const double height = frame.height - rest.height;
  if (width < 1 || height < 1) return frame;
  // A fraction times a whole number may be off by a hair.
  constexpr double hair = 0.001;
  return {rest.width + std::floor(std::min(width, height * aspect->most + hair)),
          rest.height + std::floor(std::min(height, width / aspect->least + hair))};
}

}  // namespace pellar
