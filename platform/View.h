#pragma once

#include <memory>
#include <optional>
#include <string>

#include "core/Geometry.h"
#include "platform/AccessibleElement.h"
#include "platform/Canvas.h"
#include "platform/ListView.h"
#include "platform/SearchField.h"

namespace pellar {

// A mouse event as a view receives it.
struct MouseEvent {
  ViewPoint location;
  ScreenPoint screenLocation;
  bool control = false;  // the Control key was held
  int clickCount = 1;    // 2 for the second press of a double click, both of which came to the view
  friend bool operator==(const MouseEvent&, const MouseEvent&) = default;
};

// A view drawn by us and hosted by the system. All calls arrive on the main thread from the main loop;
// mouseDragged and mouseUp follow the mouseDown of the left button, also outside the view. A click acts even
// while the view's panel is not key (first mouse).
class View {
 public:
  virtual ~View() = default;

  // Place sub-views; called before drawing after a change of size or setNeedsLayout.
  virtual void layout() = 0;
  // Paints what lies in `dirty`; the host has laid the panel's background under it and clips to it.
  virtual void draw(Canvas& canvas, const ViewRect& dirty) = 0;

  virtual void mouseDown(const MouseEvent& event) = 0;
  virtual void mouseDragged(const MouseEvent& event) = 0;
  virtual void mouseUp(const MouseEvent& event) = 0;
  virtual void rightMouseDown(const MouseEvent& event) = 0;
  virtual void otherMouseDown(const MouseEvent& event) = 0;
  // The pointer came in, or the view came up under it; before anything else that it does there.
  virtual void mouseEntered() = 0;
  // Also when the pointer goes onto a native control in the view, which may hear of it alone from then on.
  virtual void mouseMoved(const MouseEvent& event) = 0;
  virtual void mouseExited() = 0;

  // A file that the user drags out of another application is over the view, told again and again;
  // and no longer: it went on, was dropped, or the view left the screen. No view of ours takes what is
  // dropped.
  virtual void draggingUpdated(ViewPoint /*location*/) {}
  virtual void draggingExited() {}

  // What is seen in the view, for assistive technologies; asked for only while one listens.
  [[nodiscard]] virtual AccessibleElement accessibleElement() const = 0;
  // Does what a click on that element does, or what opens its menu: false where there is no such element, or
  // it has no such action. May open a menu or a question, and may do away with the view. The host calls it
  // from the main loop, for a view that a click would reach, and tells event monitors of it as of a click.
  virtual bool perform(AccessibleAction action, const std::string& id) = 0;
};

// What the system gives one view. Outlives the view's use of it: a panel drops its view before its host.
class ViewHost {
 public:
  virtual ~ViewHost() = default;

  // The view's bounds; the origin is always (0, 0).
  [[nodiscard]] virtual ViewRect bounds() const = 0;
  virtual void setNeedsLayout() = 0;
  // Asks for a repaint, of everything or of one rectangle, at the latest at the end of this turn of the main
  // loop.
  virtual void setNeedsDisplay() = 0;
  virtual void setNeedsDisplay(const ViewRect& rect) = 0;
  // The view's accessible element is another one now, for reasons other than the view's size or its native
  // controls. Costs nothing while no assistive technology listens.
  virtual void accessibleElementChanged() = 0;

  // A rectangle of the view on the screen; absent while the view is in no window.
  [[nodiscard]] virtual std::optional<ScreenRect> toScreen(const ViewRect& rect) const = 0;
  [[nodiscard]] virtual ViewPoint fromScreen(ScreenPoint point) const = 0;

  [[nodiscard]] virtual const TextMeasure& textMeasure() const = 0;
  [[nodiscard]] virtual std::unique_ptr<SearchField> makeSearchField() = 0;
  [[nodiscard]] virtual std::unique_ptr<ListView> makeListView(const ListStyle& style) = 0;
};

}  // namespace pellar
