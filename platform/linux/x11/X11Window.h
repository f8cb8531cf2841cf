#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/Geometry.h"
#include "platform/linux/x11/PointMap.h"

namespace pellar {

// Widths in pixels around a rectangle.
struct X11Extents {
  int left = 0;
  int right = 0;
  int top = 0;
  int bottom = 0;
  friend bool operator==(const X11Extents&, const X11Extents&) = default;
};

// A window's place inside its parent's, without its border.
struct X11Geometry {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  int border = 0;
  friend bool operator==(const X11Geometry&, const X11Geometry&) = default;
};

// What shape a window's own area keeps, less `base`: the bounds of its width divided by its height.
struct X11Aspect {
  double least = 0;
  double most = 0;
  Size base;
  friend bool operator==(const X11Aspect&, const X11Aspect&) = default;
};

// What a window is by its type. Docks and desktops are part of the desktop's own furniture.
enum class X11WindowKind { normal, dialog, furniture, other };

// _NET_WM_DESKTOP of a window that is on all of them (EWMH).
constexpr std::uint32_t everyDesktop = 0xFFFFFFFF;

// WM_STATE of a window that is put away, and what to change the state to so that it is
// (ICCCM 4.1.3.1, 4.1.4).
constexpr std::uint32_t iconicState = 3;

// What the mirror knows of one client window, in pixels of the X screen.
struct X11Window {
  // The window itself or one of its ancestors below the root.
  struct Link {
    xcb_window_t id = 0;
    X11Geometry geometry;
    friend bool operator==(const Link&, const Link&) = default;
  };

  xcb_window_t id = 0;
  std::vector<Link> links;  // the client first, the top-level frame last; the same one when nothing frames it

  std::optional<std::string> netName;  // raw bytes, meant to be UTF-8
  std::optional<std::string> wmName;   // UTF-8, or raw bytes of a window that claims they are
  std::string instanceName;
  std::string className;
  std::optional<std::string> clientMachine;
  std::optional<std::int32_t> pid;
  X11WindowKind kind = X11WindowKind::normal;
  bool calledNormal = false;                 // by its type, not for want of one
  std::optional<xcb_window_t> transientFor;  // WM_TRANSIENT_FOR: the window this one is a dialog of
  // It got that as a normal window that was there already: Java so holds the windows that a dialog blocks
  // below the dialog.
  bool heldBelow = false;
  std::optional<xcb_window_t> group;  // WM_HINTS: the leader of its group of windows
  bool iconic = false;                // WM_STATE
  bool hidden = false;                // the five of _NET_WM_STATE
  bool fullscreen = false;
  bool maximizedVertically = false;
  bool maximizedHorizontally = false;
  bool skipsTaskbar = false;
  std::optional<std::uint32_t> desktop;  // or everyDesktop
  std::optional<X11Extents> frameExtents;
  X11Extents shadow;  // what a window that decorates itself draws around its visible edge
  std::uint32_t gravity = XCB_GRAVITY_NORTH_WEST;
  std::optional<X11Aspect> aspect;
  std::optional<std::vector<std::uint32_t>> strut;         // left, right, top, bottom
  std::optional<std::vector<std::uint32_t>> strutPartial;  // and the first and last pixel of each

  // Counts what the window manager (or the server) said of the window's place, changed or not.
  std::uint64_t placeReports = 0;

  [[nodiscard]] std::string title() const;
  // The visible outer edge, decorations included and shadows not.
  [[nodiscard]] RootRect frame() const;
  // What the visible edge has on each side beyond the client's own area; negative where the client draws a
  // shadow.
  [[nodiscard]] X11Extents edge() const;
  // The largest visible frame within this one that the window takes by its aspect.
  [[nodiscard]] Size shaped(Size frame) const;
  [[nodiscard]] bool maximized() const { return maximizedVertically || maximizedHorizontally; }
  // Whether it is a palette or the like, which serves whatever window the user works in.
  [[nodiscard]] bool isTool() const {
    return kind == X11WindowKind::other || (kind == X11WindowKind::normal && skipsTaskbar);
  }
  // Whether it is one that users switch to. A splash screen or a palette may be a normal window by its type,
  // and stay out of task bars.
  [[nodiscard]] bool standard() const {
    return kind == X11WindowKind::normal && !skipsTaskbar && (!transientFor || heldBelow);
  }

 private:
  [[nodiscard]] RootPoint clientOrigin() const;
  [[nodiscard]] X11Extents decoration() const;
};

}  // namespace pellar
