#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/sim/applications/SimDesktop.h"
#include "platform/sim/applications/SimWindow.h"
#include "platform/sim/system/SimScreens.h"

namespace pellar {

// One simulated application.
class SimApplication {
 public:
  SimApplication(SimDesktop& desktop, const SimScreens& screens, SimApplicationPointer state)
      : desktop_(&desktop), screens_(&screens), state_(std::move(state)) {}

  [[nodiscard]] ProcessId pid() const { return state_->description.pid; }
  [[nodiscard]] bool isRunning() const { return state_->running; }

  // Opens a window in front of its others and focuses it.
  SimWindow open(std::string title, const AxRect& frame = {100, 200, 900, 600},
                 std::string subrole = "AXStandardWindow");
  // A window that is announced before its title, place and size are final.
  SimWindow openUnfinished();
  // The user picks a window of the application; the application itself does not come to the front by it.
  void focus(const SimWindow& window) { desktop_->focus(window.state_); }
  void focusNothing() { desktop_->focusNothing(*state_); }
  // Its windows become native tabs of one; the last one is selected.
  void joinAsTabs(const std::vector<SimWindow>& windows);
  void hide() { desktop_->setHidden(*state_, true); }
  void show() { desktop_->setHidden(*state_, false); }
  // It answers nothing, and reports nothing, until it is resumed.
  void freeze() { desktop_->setHung(*state_, true); }
  void resume() { desktop_->setHung(*state_, false); }

  // The menus of its menu bar, from the left; with none at all it has no menu bar. At first it has none.
  void setMenuBar(const std::vector<SimMenuTitle>& titles) { desktop_->setMenuBar(*state_, titles); }
  // The user opens a menu of the menu bar and closes it again.
  void openMenu(std::string_view title) { validate(menu({title})); }
  // An object of the menu bar by the titles on the way to it; the bar itself without any. Throws when there
  // is none.
  [[nodiscard]] SimMenuElement& menu(std::initializer_list<std::string_view> titles = {}) const;

  [[nodiscard]] std::optional<SimWindow> focusedWindow() const;
  // The one that its menus act on.
  [[nodiscard]] std::optional<SimWindow> mainWindow() const;
  [[nodiscard]] std::vector<SimWindow> windowsFrontToBack() const;
  // In the order in which it names them.
  [[nodiscard]] std::vector<SimWindow> windowsAsListed() const;
  // Keys the user typed into it.
  [[nodiscard]] const std::string& typed() const { return state_->typed; }
  // Keys with modifiers that reached it.
  [[nodiscard]] const std::vector<SimKey>& keysDown() const { return state_->keysDown; }

  [[nodiscard]] SimApplicationQuirks& quirks() { return state_->quirks; }
  [[nodiscard]] const SimApplicationQuirks& quirks() const { return state_->quirks; }

  friend bool operator==(const SimApplication& a, const SimApplication& b) { return a.state_ == b.state_; }

 private:
  friend class SimMac;
  friend class SimOffice;
  SimDesktop* desktop_;
  const SimScreens* screens_;
  SimApplicationPointer state_;
};

}  // namespace pellar
