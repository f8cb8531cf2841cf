#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "platform/sim/applications/SimDesktop.h"
#include "platform/sim/desktop/SimWindows.h"
#include "platform/sim/input/SimEventTaps.h"
#include "platform/sim/panel/SimPanels.h"
#include "platform/sim/system/SimMainLoop.h"

namespace pellar {

// The user's keyboard. Keys go to the key window, else to the focused list or field of the key panel, else to
// the application in front. Each call returns when the main loop is idle again, or at once while the main
// thread is held up.
class SimKeyboard {
 public:
  SimKeyboard(SimMainLoop& loop, SimDesktop& desktop, SimPanels& panels, SimEventTaps& taps,
              SimWindows& windows)
      : loop_(loop), desktop_(desktop), panels_(panels), taps_(taps), windows_(windows) {}

  void type(std::string_view text);
  // A key command by its selector: "moveDown:", "insertNewline:", "cancelOperation:", "deleteBackward:".
  void command(const std::string& selector);
  // A key with its virtual code and modifier flags. Taps see it first.
  void keyDown(std::uint16_t keyCode, std::uint64_t flags);

 private:
  void press(std::function<void()> arrive);
  [[nodiscard]] SimSearchField* target() const;

  SimMainLoop& loop_;
  SimDesktop& desktop_;
  SimPanels& panels_;
  SimEventTaps& taps_;
  SimWindows& windows_;
};

}  // namespace pellar
