#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Accessibility.h"
#include "platform/sim/applications/SimDesktop.h"
#include "platform/sim/applications/SimElement.h"
#include "platform/sim/system/SimScreens.h"

namespace pellar {

// One window of a simulated application, and what its user or its application does to it. These are not
// requests: quirks do not stand in their way. The program hears of them when the main loop next runs.
class SimWindow {
 public:
  SimWindow(SimDesktop& desktop, const SimScreens& screens, SimWindowPointer state)
      : desktop_(&desktop), screens_(&screens), state_(std::move(state)) {}

  [[nodiscard]] const std::string& title() const { return state_->title; }
  [[nodiscard]] AxRect frame() const { return state_->frame; }
  [[nodiscard]] bool isMinimised() const { return state_->minimised; }
  [[nodiscard]] bool isFullScreen() const { return state_->fullScreen; }
  [[nodiscard]] bool exists() const { return state_->exists; }
  [[nodiscard]] const std::string& subrole() const { return state_->subrole; }
  [[nodiscard]] const std::optional<std::string>& document() const { return state_->document; }
  // Whether its application names it at the moment.
  [[nodiscard]] bool isNamed() const { return desktop_->isNamed(*state_); }
  [[nodiscard]] ProcessId pid() const { return state_->pid; }
  [[nodiscard]] bool isBehindNativeTab() const { return SimDesktop::isBehindNativeTab(*state_); }
  // By which the program knows the window and its tab.
  [[nodiscard]] WindowId id() const { return element().hash(); }
  [[nodiscard]] Element element() const { return SimElement::ofWindow(state_); }
  [[nodiscard]] int closePresses() const { return state_->closePresses; }
  [[nodiscard]] int raises() const { return state_->raises; }

  void retitle(std::string title) { desktop_->setTitle(*state_, std::move(title)); }
  void moveTo(AxPoint origin) { setFrame(AxRect::of(origin, frame().size())); }
  void resizeTo(Size size) { setFrame(AxRect::of(frame().origin(), size)); }
  void setFrame(const AxRect& frame) { desktop_->setFrame(*state_, frame); }
  void minimise() { desktop_->setMinimised(state_, true); }
  void restore() { desktop_->setMinimised(state_, false); }
  // Full screen on the screen that holds its middle, else the first one.
  void enterFullScreen();
  void leaveFullScreen() { desktop_->setFullScreen(state_, false, {}); }
  // The system moves it step by step from now on, until it has come to rest.
  void setOnItsWay() { state_->atRest = false; }
  void comeToRest();
  void moveToSpace(int space) { desktop_->setSpace(*state_, space); }
  // The user selects it among the native tabs that share its frame.
  void selectNativeTab() { desktop_->selectNativeTab(state_); }
  void close() { desktop_->destroy(state_); }
  // Its element is gone, yet the application still names it and no notification came.
  void vanishUnannounced() { desktop_->destroy(state_, true); }
  // The text of "AXDocument", a URL.
  void setDocument(std::optional<std::string> url);

  [[nodiscard]] SimWindowQuirks& quirks() { return state_->quirks; }
  [[nodiscard]] const SimWindowQuirks& quirks() const { return state_->quirks; }

  friend bool operator==(const SimWindow& a, const SimWindow& b) { return a.state_ == b.state_; }

 private:
  friend class SimApplication;
  SimDesktop* desktop_;
  const SimScreens* screens_;
  SimWindowPointer state_;
};

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
