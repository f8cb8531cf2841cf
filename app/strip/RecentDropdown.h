#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "app/strip/TabStripView.h"
#include "platform/EventMonitors.h"
#include "platform/Panel.h"
#include "platform/ScreenList.h"
#include "platform/Subscription.h"

namespace pellar {

// The panel of recently used files under the strip's search field: its place, and what it takes to open and
// close it. Main thread only.
class RecentDropdown {
 public:
  // All outlive the drop-down; `view` fills `strip`.
  RecentDropdown(PanelFactory& panels, EventMonitors& eventMonitors, ScreenList& screens, Panel& strip,
                 TabStripView& view);

  // The user pressed a mouse button elsewhere while it was open.
  std::function<void()> onOutsideClick;

  [[nodiscard]] bool isOpen() const { return open_; }
  // Shows it unless it is open, and in every case lets the search field have the keyboard.
  void open();
  // Hides it, empties and folds the search field and gives the keyboard up. False when it was not open.
  bool close();
  // Puts it under the search field, inside the strip's screen.
  void position();

 private:
  [[nodiscard]] bool isInside(const ObservedClick& click);

  EventMonitors& eventMonitors_;
  ScreenList& screens_;
  Panel& strip_;
  TabStripView& view_;
  std::unique_ptr<Panel> panel_;
  bool open_ = false;
  std::vector<Subscription> clickMonitors_;
};

}  // namespace pellar
