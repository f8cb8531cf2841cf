#pragma once

#include <xcb/xcb.h>

#include <cstdint>

namespace pellar {

// Whether a compositing program runs, and the visual for windows that it can show translucent.
class X11Compositor {
 public:
  X11Compositor(xcb_connection_t* connection, const xcb_screen_t& screen);
  ~X11Compositor();
  X11Compositor(const X11Compositor&) = delete;
  X11Compositor& operator=(const X11Compositor&) = delete;

  // Translucent pixels are blended with what is behind them; without that they would be seen as they are.
  [[nodiscard]] bool blends() const { return running_ && depth_ == 32; }

  [[nodiscard]] std::uint8_t depth() const { return depth_; }
  [[nodiscard]] xcb_visualid_t visual() const { return visual_; }
  [[nodiscard]] xcb_colormap_t colormap() const { return colormap_; }

  // Takes an event of the connection; true when the answer of `blends` changed.
  bool handle(const xcb_generic_event_t& event);

 private:
  xcb_connection_t* connection_;
  std::uint8_t depth_;
  xcb_visualid_t visual_;
  xcb_colormap_t colormap_ = XCB_NONE;
  xcb_atom_t selection_ = XCB_NONE;
  std::uint8_t selectionEvent_ = 0;  // 0 when the server cannot report it
  bool running_ = false;
};

}  // namespace pellar
