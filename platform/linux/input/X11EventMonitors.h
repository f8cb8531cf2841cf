#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

#include "platform/EventMonitors.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11WindowManagerTurn.h"
#include "platform/shared/system/CallbackList.h"

namespace pellar {

class MainLoop;

// Watches the mouse's buttons: presses of others, and all releases, as raw XInput events, asked for only
// while somebody listens; our own presses as the panels tell of them. A press of others is told when the
// window manager has dealt with it: who gives the keyboard back because of it would else take it from the
// window that was pressed.
class X11EventMonitors final : public EventMonitors {
 public:
  X11EventMonitors(X11Connection& connection, MainLoop& loop);
  ~X11EventMonitors() override;

  [[nodiscard]] Subscription onGlobalMouseDown(std::function<void()> callback) override;
  [[nodiscard]] Subscription onLocalMouseDown(std::function<void(const ObservedClick&)> callback) override {
    return local_.add(std::move(callback));
  }
  [[nodiscard]] Subscription onceButtonsAreUp(std::function<void()> callback) override;

  // For the panels, which deliver the presses in our own windows: to be called before each left or right one
  // is delivered, from the main loop.
  void localMouseDown(const ObservedClick& click) { local_.call(click); }

 private:
  struct Listeners;

  void handle(const xcb_generic_event_t& event);
  void handlePress();
  void handleRelease();
  // Has the server tell what there are listeners for.
  void select();
  [[nodiscard]] bool isButtonHeld() const;
  [[nodiscard]] bool pointerIsInOwnWindow() const;

  X11Connection& connection_;
  MainLoop& loop_;
  std::uint8_t opcode_ = 0;  // of XInput; 0 when the server has none that tells of presses during grabs
  X11WindowManagerTurn windowManager_;
  CallbackList<ObservedClick> local_;
  std::shared_ptr<Listeners> listeners_;
  Subscription events_;
};

}  // namespace pellar
