#pragma once

#include "platform/MenuPresenter.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Density.h"

namespace pellar {

class EventMonitors;
class ScreenList;

// Pop-up menus as the toolkit draws them.
class QtMenus final : public MenuPresenter {
 public:
  QtMenus(X11Connection& connection, const X11Density& density, const ScreenList& screens,
          EventMonitors& monitors)
      : connection_(connection), density_(density), screens_(screens), monitors_(monitors) {}

  void popUpContextMenu(const Menu& menu, const MouseEvent& event) override;

 private:
  X11Connection& connection_;
  const X11Density& density_;
  const ScreenList& screens_;
  EventMonitors& monitors_;
  bool open_ = false;
};

}  // namespace pellar
