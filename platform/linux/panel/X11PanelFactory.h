#pragma once

#include <xcb/xcb.h>

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include "core/Alive.h"
#include "platform/Panel.h"
#include "platform/linux/drawing/PixelRect.h"
#include "platform/linux/panel/AccessiblePanels.h"
#include "platform/linux/panel/X11PanelServices.h"

namespace pellar {

class QtMainLoop;
class X11Panel;

// Makes panels and hands each the events of its window.
class X11PanelFactory final : public PanelFactory {
 public:
  // `reportPress` is told of every press in a panel before the press is delivered.
  X11PanelFactory(X11Connection& connection, const X11Mirror& mirror, QtMainLoop& loop,
                  const ScreenList& screens, const X11Density& density, EventMonitors& monitors,
                  std::function<void(const ObservedClick&)> reportPress);
  ~X11PanelFactory() override;
  X11PanelFactory(const X11PanelFactory&) = delete;
  X11PanelFactory& operator=(const X11PanelFactory&) = delete;

  [[nodiscard]] std::unique_ptr<Panel> makePanel(const PanelStyle& style) override;

  // These windows are new, changed or gone.
  void noteWindows(const std::set<xcb_window_t>& changed);

  // A window of another program is about to be made active.
  void noteActivating();

  // Where the shown panels are.
  [[nodiscard]] std::vector<PixelRect> shownFrames() const;
  // Where the strip is: the panel that stays when the desktop changes. Absent while it is off the screen.
  [[nodiscard]] std::optional<PixelRect> stripFrame() const;

 private:
  void take(const xcb_generic_event_t& event);
  // Whether the window manager says by this event that the stack has changed.
  [[nodiscard]] bool tellsNewStack(const xcb_generic_event_t& event) const;
  void deliver();

  QtMainLoop& loop_;
  X11PanelServices services_;
  std::map<xcb_window_t, X11Panel*> panels_;
  AccessiblePanels accessible_;  // depends-on: panels_
  std::deque<xcb_generic_event_t> events_;
  Subscription subscription_;
  Subscription delivery_;
  Alive alive_;
};

}  // namespace pellar
