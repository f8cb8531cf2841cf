#pragma once

#include <xcb/xcb.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "core/Alive.h"
#include "platform/Panel.h"
#include "platform/linux/drawing/ScaledTextMeasure.h"
#include "platform/linux/panel/X11DropTarget.h"
#include "platform/linux/panel/X11PanelMouse.h"
#include "platform/linux/panel/X11PanelPicture.h"
#include "platform/linux/panel/X11PanelServices.h"
#include "platform/linux/panel/X11PanelWindow.h"
#include "platform/linux/panel/X11StackKeeper.h"
#include "platform/shared/panel/PointerPresence.h"
#include "platform/shared/system/CallbackList.h"

namespace pellar {

class QtListView;
class QtSearchField;

// A panel as a bare X window with a picture of its content: only what changed is painted and sent.
//
// While a key panel has a search field for its first responder, the keyboard is borrowed from the window in
// front (X11KeyboardFocus). A press outside the program's windows, and somebody else who is given the
// keyboard, end being key.
class X11Panel final : public Panel, public ViewHost, public KeyPanel {
 public:
  // `onEnd` is called by the destructor.
  X11Panel(X11PanelServices& services, const PanelStyle& style, std::function<void()> onEnd);
  ~X11Panel() override;
  X11Panel(const X11Panel&) = delete;
  X11Panel& operator=(const X11Panel&) = delete;

  [[nodiscard]] ViewHost& host() override { return *this; }
  void setView(View* view) override;
  void setFrame(const ScreenRect& frame, bool display) override;
  [[nodiscard]] ScreenRect frame() const override { return frame_; }
  [[nodiscard]] std::optional<ScreenRect> screenVisibleFrame() const override;
  void orderFrontRegardless() override;
  void orderAbove(const Element& window) override;
  void orderOut() override;
  [[nodiscard]] bool isVisible() const override { return visible_; }
  void makeKeyAndOrderFront() override;
  void resignKey() override;
  [[nodiscard]] bool isKey() const override { return services_.keys.isKey(*this); }
  void clearFirstResponder() override;
  [[nodiscard]] Subscription onDidResignKey(std::function<void()> callback) override {
    return resigned_.add(std::move(callback));
  }

  [[nodiscard]] ViewRect bounds() const override;
  void setNeedsLayout() override;
  void setNeedsDisplay() override;
  void setNeedsDisplay(const ViewRect& rect) override;
  void accessibleElementChanged() override;
  [[nodiscard]] std::optional<ScreenRect> toScreen(const ViewRect& rect) const override;
  [[nodiscard]] ViewPoint fromScreen(ScreenPoint point) const override;
  [[nodiscard]] const TextMeasure& textMeasure() const override { return measure_; }
  [[nodiscard]] std::unique_ptr<SearchField> makeSearchField() override;
  [[nodiscard]] std::unique_ptr<ListView> makeListView(const ListStyle& style) override;

  [[nodiscard]] xcb_window_t window() const { return window_.id(); }
  [[nodiscard]] const PanelStyle& style() const { return style_; }
  [[nodiscard]] const PixelRect& pixelFrame() const { return window_.frame(); }
  // Pixels to a point, where the panel is now.
  [[nodiscard]] double scale() const { return scale_; }
  // Takes an event of the window, from the main loop. May end the panel.
  void handle(const xcb_generic_event_t& event);
  // Is told of other windows.
  [[nodiscard]] X11StackKeeper& stack() { return stack_; }
  // A window of another program is about to be made active.
  void noteActivating();
  // A compositing program came or went.
  void blendingChanged();

  // For the panel's search fields and lists.
  [[nodiscard]] X11PanelServices& services() { return services_; }
  void addField(QtSearchField& field);
  void removeField(QtSearchField& field);
  void addList(QtListView& list);
  void removeList(QtListView& list);
  void reportPress(ScreenPoint location);

  // For assistive technologies.
  // What the view tells; absent while the panel is off the screen.
  [[nodiscard]] std::optional<AccessibleElement> accessibleElement() const;
  // Where a rectangle of the view is on the whole X screen.
  [[nodiscard]] QRect onScreenPixels(const ViewRect& rect) const;
  // Does it as a click would; may end the panel.
  void perform(AccessibleAction action, const std::string& id);

 private:
  void keyEnded() override { outsidePress_.cancel(); }
  void tellKeyEnded() override { resigned_.call(); }

  void show();
  // Whether what the pointer did happened since the panel was last shown, and the panel is on the screen.
  [[nodiscard]] bool isCurrent(const xcb_generic_event_t& event) const;
  // Tells the view that the pointer is inside, unless it knows. Whether the panel is on the screen after
  // that.
  bool noteInside();
  void press(const xcb_button_press_event_t& event);
  void release(const xcb_button_release_event_t& event);
  void cross(const xcb_enter_notify_event_t& event);
  void leave(const xcb_leave_notify_event_t& event);
  [[nodiscard]] View* mouseTarget();
  [[nodiscard]] QtListView* listAt(ViewPoint point);
  void schedulePaint();
  void paint();
  [[nodiscard]] int cornerPixels() const;
  [[nodiscard]] PointerSpace pointerSpace() const;

  X11PanelServices& services_;
  PanelStyle style_;
  std::function<void()> onEnd_;
  ScreenRect frame_;
  double scale_;
  ScaledTextMeasure measure_;
  X11PanelWindow window_;
  X11StackKeeper stack_;     // depends-on: window_
  X11PanelPicture picture_;  // depends-on: window_
  PanelContent content_;
  QtListView* pressedList_ = nullptr;  // has the pointer until the button is released
  X11PanelMouse mouse_;
  X11DropTarget dropTarget_;
  PointerPresence pointer_;

  bool needsLayout_ = true;
  bool paintPosted_ = false;
  bool visible_ = false;
  std::uint32_t shownBy_ = 0;  // the request that last showed it
  bool obscured_ = false;      // since the place in the stack was last looked at

  CallbackList<> resigned_;
  Subscription outsidePress_;
  Alive alive_;
};

}  // namespace pellar
