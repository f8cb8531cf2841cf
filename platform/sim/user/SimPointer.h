#pragma once

#include <cstdint>
#include <functional>

#include "platform/View.h"
#include "platform/sim/applications/SimDesktop.h"
#include "platform/sim/input/SimEventMonitors.h"
#include "platform/sim/panel/SimPanels.h"
#include "platform/sim/system/SimMainLoop.h"
#include "platform/sim/system/SimScreens.h"

namespace pellar {

// The user's mouse. Every event goes through the main loop, and each call returns when the loop is idle
// again. A press lands in the panel at the pointer, else in the application window there, which comes to the
// front and is dragged by its title bar.
class SimPointer {
 public:
  enum class Control : std::uint8_t { up, held };

  SimPointer(SimMainLoop& loop, SimDesktop& desktop, const SimScreens& screens, SimPanels& panels,
             SimEventMonitors& monitors)
      : loop_(loop), desktop_(desktop), screens_(screens), panels_(panels), monitors_(monitors) {}

  // With no button held: hovers. With the left one held: drags. `look` sees what the event itself did, before
  // anything that it brought about is reported.
  void moveTo(ScreenPoint point, const std::function<void()>& look = {});
  void press(ScreenPoint point, int clickCount = 1, Control control = Control::up);
  void release();

  void click(ScreenPoint point);
  void doubleClick(ScreenPoint point);
  void controlClick(ScreenPoint point);
  void rightClick(ScreenPoint point);
  void middleClick(ScreenPoint point);
  // Press, several steps on the way, release.
  void drag(ScreenPoint from, ScreenPoint to);
  // The same after the press.
  void dragOn(ScreenPoint from, ScreenPoint to);
  // Turns the wheel there, downward when positive.
  void scroll(ScreenPoint point, int notches);

  // Whether a look of a move is being taken.
  [[nodiscard]] bool isLooking() const { return looking_; }
  [[nodiscard]] ScreenPoint location() const { return location_; }

  // A click into a control that takes the keyboard makes this program the frontmost application.
  bool keyPanelMakesPellarFrontmost = false;

 private:
  enum class Button : std::uint8_t { left, right, middle };

  void hover();
  void dragged();
  void releasePanel();
  void deliverPress(Button button, int clickCount, bool control);
  void pressInPanel(SimPanel& panel, Button button, const MouseEvent& event);
  [[nodiscard]] MouseEvent eventIn(const SimPanel& panel, int clickCount, bool control) const;

  SimMainLoop& loop_;
  SimDesktop& desktop_;
  const SimScreens& screens_;
  SimPanels& panels_;
  SimEventMonitors& monitors_;
  ScreenPoint location_;
  bool looking_ = false;
  bool leftHeld_ = false;
  int clickCount_ = 1;
  SimPanel* pressed_ = nullptr;         // the panel that took the left press; may be gone
  SimListView* pressedList_ = nullptr;  // the list in it that did; may be gone
  SimPanel* hovered_ = nullptr;         // the panel under the pointer; may be gone
  SimWindowPointer dragged_;            // the application's window that is held by its title bar
  AxPoint grip_;                        // from that window's corner to the pointer
};

}  // namespace pellar
