#include "platform/linux/applications/X11StripRoom.h"

#include <unistd.h>
#include <xcb/shape.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <utility>

namespace pellar {
namespace {

int whole(double value) {
  return static_cast<int>(std::lround(value));
}

}  // namespace

X11StripRoom::X11StripRoom(X11Connection& connection, const X11Mirror& mirror,
                           const X11Applications& applications, const X11Density& density,
                           X11ScreenList& screens)
    : connection_(connection),
      mirror_(mirror),
      applications_(applications),
      density_(density),
      screens_(screens) {}

X11StripRoom::~X11StripRoom() {
  for (const auto& [reserve, window] : made_) xcb_destroy_window(connection_.xcb(), window);
}

void X11StripRoom::note(const X11Mirror::Changes& changes) {
  const auto concerns = [this](xcb_window_t id) {
    const X11Window* window = mirror_.find(id);
    return windows_.contains(id) || (window != nullptr && window->maximizedVertically);
  };
  stale_ = stale_ || changes.desktop || changes.screens || std::ranges::any_of(changes.windows, concerns);
}

void X11StripRoom::update(const std::optional<PixelRect>& strip) {
  noteStrip(strip);
  if (!stale_) return;
  stale_ = false;
  const auto before = std::exchange(windows_, {});
  std::set<Reserve> wanted;
  for (const xcb_window_t id : mirror_.clientList()) {
    const X11Window& window = *mirror_.find(id);
    if (!needsRoom(window)) continue;
    const RootRect frame = window.frame();
    const auto known = before.find(id);
    // A window manager that knows other monitors would take the window to and fro with each change of mind.
    const bool stays = known != before.end() && known->second.intersects(frame);
    const RootRect monitor = stays ? known->second : density_.map().holding(frame).pixels();
    windows_[id] = monitor;
    if (const auto reserve = reserveFor(monitor)) wanted.insert(*reserve);
  }
  // The new ones first, so that windows are not resized twice.
  for (const Reserve& each : wanted) {
    if (!made_.contains(each)) made_[each] = reserve(each);
  }
  std::erase_if(made_, [&](const auto& entry) {
    if (wanted.contains(entry.first)) return false;
    xcb_destroy_window(connection_.xcb(), entry.second);
    return true;
  });
}

void X11StripRoom::noteStrip(const std::optional<PixelRect>& strip) {
  const X11Application* application = applications_.ofWindow(mirror_.activeWindow());
  const X11Window* front =
      application == nullptr ? nullptr : mirror_.find(applications_.focusedWindow(*application));
  if (front == nullptr || !front->standard() || mirror_.isMinimized(*front) || front->fullscreen) return;
  const RootRect frame = front->frame();
  const bool isOverFront = strip && strip->x == whole(frame.x) && strip->y + strip->height == whole(frame.y);
  // Between two windows the strip may still be over the other one.
  if (strip && !isOverFront) return;
  if (strip && height_ != strip->height) {
    height_ = strip->height;
    stale_ = true;
  }
  const bool changes =
      strip ? withStrip_.insert(application->pid).second : withStrip_.erase(application->pid) > 0;
  stale_ = stale_ || changes;
}

bool X11StripRoom::needsRoom(const X11Window& window) const {
  if (!window.maximizedVertically || !window.standard() || mirror_.isMinimized(window) ||
      !mirror_.isOnShownDesktop(window))
    return false;
  const X11Application* application = applications_.ofWindow(window.id);
  return application != nullptr && withStrip_.contains(application->pid);
}

std::optional<X11StripRoom::Reserve> X11StripRoom::reserveFor(const RootRect& pixels) const {
  if (density_.map().hasMonitorAbove(pixels)) return std::nullopt;
  for (const auto& monitor : screens_.monitors()) {
    if (monitor.pixels.intersects(pixels))
      return Reserve{whole(monitor.visible.y) + height_, whole(pixels.x), whole(pixels.maxX()) - 1};
  }
  return std::nullopt;
}

// Window managers heed what is reserved by a window that they look after, as they do docks.
xcb_window_t X11StripRoom::reserve(const Reserve& reserve) {
  xcb_connection_t* xcb = connection_.xcb();
  const X11Atoms& atoms = connection_.atoms();
  const xcb_window_t window = xcb_generate_id(xcb);
  // As small as a window can be, and under the strip, where it is in the way of no click. Some window
  // managers (sawfish) go by its place, not by what it reserves.
  xcb_create_window(xcb, XCB_COPY_FROM_PARENT, window, connection_.root(),
                    static_cast<std::int16_t>((reserve.first + reserve.last) / 2),
                    static_cast<std::int16_t>(reserve.depth - 1), 1, 1, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                    XCB_COPY_FROM_PARENT, 0, nullptr);
  xcb_shape_rectangles(xcb, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED, window, 0, 0, 0,
                       nullptr);
  const auto numbers = [&](xcb_atom_t property, xcb_atom_t type, const auto& values) {
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, window, property, type, 32,
                        static_cast<std::uint32_t>(values.size()), values.data());
  };
  const auto depth = static_cast<std::uint32_t>(reserve.depth);
  const auto first = static_cast<std::uint32_t>(reserve.first);
  const auto last = static_cast<std::uint32_t>(reserve.last);
  // WM_NORMAL_HINTS: it stays just there, where fvwm, which frames docks, would put it over the user's
  // window.
  constexpr std::uint32_t userPositionHint = 1;
  constexpr std::uint32_t gravityHint = 1U << 9U;
  std::array<std::uint32_t, 18> sizeHints{};
  sizeHints.front() = userPositionHint | gravityHint;
  sizeHints.back() = XCB_GRAVITY_STATIC;
  numbers(XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, sizeHints);
  // By its class the user's configuration can have it unframed.
  constexpr std::array<char, 23> className{"pellar-room\0PellarRoom"};
  xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                      static_cast<std::uint32_t>(className.size()), className.data());
  // WM_HINTS that say one thing: it takes no keys.
  constexpr std::uint32_t inputHint = 1;
  numbers(atoms.netWmStrutPartial, XCB_ATOM_CARDINAL,
          std::array<std::uint32_t, 12>{0, 0, depth, 0, 0, 0, 0, 0, first, last, 0, 0});
  // For window managers that know only what is reserved along a whole edge.
  numbers(atoms.netWmStrut, XCB_ATOM_CARDINAL, std::array<std::uint32_t, 4>{0, 0, depth, 0});
  numbers(atoms.netWmWindowType, XCB_ATOM_ATOM, std::array{atoms.typeDock});
  numbers(atoms.netWmDesktop, XCB_ATOM_CARDINAL, std::array{everyDesktop});
  numbers(atoms.netWmPid, XCB_ATOM_CARDINAL, std::array{static_cast<std::uint32_t>(getpid())});
  numbers(XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, std::array<std::uint32_t, 9>{inputHint});
  xcb_map_window(xcb, window);
  screens_.noteOwnReserve(reserve.depth);
  return window;
}

}  // namespace pellar
