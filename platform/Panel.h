#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "core/Geometry.h"
#include "platform/Accessibility.h"
#include "platform/Subscription.h"
#include "platform/View.h"

namespace pellar {

// Window levels (NSWindowLevel).
enum class PanelLevel { floating = 3, popUpMenu = 101 };

// How a borderless, non-activating, shadowed, translucent panel behaves. All of them can join all spaces and
// stand over full-screen windows, none hides while this program is not the active one, none is released when
// closed, and none is listed in a task bar or a window cycle.
struct PanelStyle {
  Size contentSize;
  PanelLevel level = PanelLevel::floating;
  bool canBecomeKey = false;  // may be given the keyboard
  bool stationary = false;    // stays in its place while the system shows all windows at once
  bool ignoresCycle = false;  // the system's cycle through a program's windows passes over it
  bool glass = true;          // without it nothing lies under the view, which draws its own ground
  double cornerRadius = 12;   // what a view without glass paints outside of these corners need not be seen
  friend bool operator==(const PanelStyle&, const PanelStyle&) = default;
};

// A panel over a dark, translucent, rounded background (radius 12, a border of 1 in white with alpha 0.14),
// if its style does not do without it. Never takes the focus from the application in front by itself. Main
// thread only.
class Panel {
 public:
  virtual ~Panel() = default;

  // The native view that hosts this panel's custom view.
  [[nodiscard]] virtual ViewHost& host() = 0;
  // The view that fills the panel; null takes it away. Not owned: it is taken away before it ends.
  virtual void setView(View* view) = 0;

  // Moves and resizes; with `display` what the view asked to have redrawn is on its way to the screen on
  // return. Where windows are whole pixels large, the panel is large enough for the frame.
  virtual void setFrame(const ScreenRect& frame, bool display) = 0;
  [[nodiscard]] virtual ScreenRect frame() const = 0;
  // The visible frame of the screen that holds most of the panel; absent when it is on none.
  [[nodiscard]] virtual std::optional<ScreenRect> screenVisibleFrame() const = 0;

  // Shows the panel above its level's others without making it key.
  virtual void orderFrontRegardless() = 0;
  // Takes the panel off the screen. If the pointer is in its view, also because the view is being pressed,
  // the view hears mouseExited once, from the main loop, and before anything else that the pointer does
  // there. Until it is shown again the panel takes no press: one that was made before, but arrives only now,
  // reaches neither its view, nor a control in it, nor an event monitor.
  virtual void orderOut() = 0;
  [[nodiscard]] virtual bool isVisible() const = 0;

  // Gives the panel the keyboard (of a panel that can become key) while the application in front stays in
  // front.
  virtual void makeKeyAndOrderFront() = 0;
  virtual void resignKey() = 0;
  [[nodiscard]] virtual bool isKey() const = 0;
  // Takes the keyboard from the control that has it; the panel stays key.
  virtual void clearFirstResponder() = 0;
  // The panel stopped being key, from the main loop or inside resignKey.
  [[nodiscard]] virtual Subscription onDidResignKey(std::function<void()> callback) = 0;

  // Shows it as the panel of another application's window. Where panels and windows share one stack it stands
  // directly above that window, wherever that one goes, and so below what stands above it; otherwise this is
  // orderFrontRegardless. It lasts until either is called again.
  virtual void orderAbove(const Element& window) = 0;
};

// Makes panels; one object a program.
class PanelFactory {
 public:
  virtual ~PanelFactory() = default;
  [[nodiscard]] virtual std::unique_ptr<Panel> makePanel(const PanelStyle& style) = 0;
};

}  // namespace pellar
