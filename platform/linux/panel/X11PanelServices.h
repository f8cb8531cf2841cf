#pragma once

#include <xcb/xcb.h>

#include <functional>

#include "platform/EventMonitors.h"
#include "platform/MainLoop.h"
#include "platform/ScreenList.h"
#include "platform/linux/drawing/QtTextMeasure.h"
#include "platform/linux/drawing/SpriteCache.h"
#include "platform/linux/x11/X11Compositor.h"
#include "platform/linux/x11/X11Connection.h"

namespace pellar {

class QtListView;
class X11Panel;

// What all panels share.
struct X11PanelServices {
  X11Connection& connection;
  const xcb_screen_t& screen;
  MainLoop& loop;
  const ScreenList& screens;
  EventMonitors& monitors;
  std::function<void(const ObservedClick&)> reportPress;  // before the press is delivered
  X11Compositor compositor{connection.xcb(), screen};
  QtTextMeasure measure{};
  SpriteCache sprites{};
  X11Panel* key = nullptr;  // the panel that has the keyboard
  // The list, of any panel, that has the keys of the key panel's search field; null when the field has them.
  QtListView* keyList = nullptr;

  // 0 while there is no screen.
  [[nodiscard]] double firstScreenHeight() const {
    const auto all = screens.screens();
    return all.empty() ? 0 : all.front().frame.height;
  }
};

}  // namespace pellar
