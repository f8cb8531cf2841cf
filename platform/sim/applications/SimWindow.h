#pragma once

#include <optional>
#include <string>
#include <utility>

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

}  // namespace pellar
