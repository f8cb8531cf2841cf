#pragma once

#include "platform/Menu.h"
#include "platform/View.h"

namespace pellar {

// Shows native pop-up menus, which keyboard and pointer work. Main thread only.
class MenuPresenter {
 public:
  virtual ~MenuPresenter() = default;

  // Shows `menu` at the event's place and returns when it is closed, after the handler of what was chosen
  // ran, if anything was. Until then the main loop runs nested: timers fire and posted blocks run; reports of
  // other applications may wait until the menu is closed. While a menu is open, another one is not shown and
  // the call returns at once.
  virtual void popUpContextMenu(const Menu& menu, const MouseEvent& event) = 0;
};

}  // namespace pellar
