#pragma once

#include <xcb/xcb.h>

#include <QImage>
#include <QRect>
#include <cstdint>
#include <vector>

#include "platform/linux/drawing/PixelRect.h"

namespace pellar {

class X11Compositor;
class X11Connection;

// The bare window of one panel. It is override-redirect: no window manager frames, lists, focuses or places
// it, so a move is one request that takes effect at once. Requests are buffered until `flush`.
class X11PanelWindow {
 public:
  // Corners are rounded by `radius` pixels.
  X11PanelWindow(const X11Connection& connection, const X11Compositor& compositor, const PixelRect& frame,
                 int radius);
  ~X11PanelWindow();
  X11PanelWindow(const X11PanelWindow&) = delete;
  X11PanelWindow& operator=(const X11PanelWindow&) = delete;

  [[nodiscard]] xcb_window_t id() const { return id_; }
  [[nodiscard]] const PixelRect& frame() const { return frame_; }

  // Moves and resizes in one request; nothing is sent when nothing changes.
  void setFrame(const PixelRect& frame, int radius);
  // Cuts the corners off where they cannot be made transparent.
  void updateShape();
  // Leaves these parts out, in root coordinates: they are not drawn and take no clicks.
  void spare(std::vector<PixelRect> parts);

  // The number of the request: what the server tells with a lower one happened before.
  std::uint32_t map();
  void unmap();
  // Whether a window that some window manager looks after stands above this one. Asks the server.
  [[nodiscard]] bool isBelowManagedWindow() const;

  // Copies a part of the picture to the same place in the window.
  void put(const QImage& picture, const QRect& part);
  void flush();

 private:
  void describe();

  const X11Connection& connection_;
  const X11Compositor& compositor_;
  int radius_;
  PixelRect frame_;
  std::vector<PixelRect> spared_;
  xcb_window_t id_;
  xcb_gcontext_t context_;
  std::uint32_t mostBytes_;  // of one request
  std::vector<std::uint8_t> rows_;
};

}  // namespace pellar
