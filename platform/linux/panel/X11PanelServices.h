#pragma once

#include <xcb/xcb.h>

#include <functional>

#include "platform/EventMonitors.h"
#include "platform/MainLoop.h"
#include "platform/ScreenList.h"
#include "platform/linux/drawing/QtCanvas.h"
#include "platform/linux/drawing/QtTextMeasure.h"
#include "platform/linux/drawing/SpriteCache.h"
#include "platform/linux/panel/X11KeyboardFocus.h"
#include "platform/linux/panel/X11PointerHold.h"
#include "platform/linux/x11/X11Compositor.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Contrast.h"
#include "platform/linux/x11/X11Density.h"
#include "platform/linux/x11/X11Mirror.h"
#include "platform/shared/panel/KeyOwner.h"

namespace pellar {

// What all panels share.
struct X11PanelServices {
  X11Connection& connection;
  const X11Mirror& mirror;
  MainLoop& loop;
  const ScreenList& screens;
  const X11Density& density;
  EventMonitors& monitors;
  std::function<void(const ObservedClick&)> reportPress;  // before the press is delivered
  X11Compositor compositor{connection.xcb(), connection.screen()};
  X11Contrast contrast{connection.xcb(), connection.screen()};
  QtTextMeasure measure{};
  SpriteCache sprites{};
  KeyOwner keys{loop};
  X11KeyboardFocus keyboard{connection, loop};
  X11PointerHold pointerHold{connection, mirror};
  // What a panel on the screen tells assistive technologies is something else now; absent while none listens.
  std::function<void()> tellAccessibleChange = nullptr;
  // When the press or release that is being delivered happened; XCB_CURRENT_TIME between them.
  xcb_timestamp_t inputTime = XCB_CURRENT_TIME;

  // What draws into a part of a picture with `scale` pixels to a point.
  [[nodiscard]] QtCanvas canvasOn(QImage& picture, const QRect& part, double scale) {
    return QtCanvas(picture, part, scale, measure, sprites, contrast.isIncreased());
  }
  // 0 while there is no screen.
  [[nodiscard]] double firstScreenHeight() const {
    const auto all = screens.screens();
    return all.empty() ? 0 : all.front().frame.height;
  }
  [[nodiscard]] AxRect toAx(const ScreenRect& rect) const {
    return {rect.x, firstScreenHeight() - rect.maxY(), rect.width, rect.height};
  }
};

}  // namespace pellar
