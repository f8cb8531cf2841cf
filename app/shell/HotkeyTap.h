#pragma once

#include <functional>
#include <memory>

#include "core/Alive.h"
#include "platform/EventTap.h"
#include "platform/MainLoop.h"

namespace pellar {

// The shortcut of the whole session: Control-Tab goes to the next tab, Control-Shift-Tab to the previous one.
// A key that is not acted on reaches the application in front as if there were no tap. Main thread only.
class HotkeyTap {
 public:
  // Both outlive the tap.
  HotkeyTap(EventTaps& taps, MainLoop& loop);

  // Whether the shortcut acts now. Asked while the session's input waits.
  std::function<bool()> isActive = [] { return false; };
  std::function<void(bool forward)> onCycle = [](bool) {};

  // Installs the tap, for as long as this lives. Where the system refuses it, the program runs on without the
  // shortcut.
  void start();

 private:
  bool handle(const TapEvent& event);

  EventTaps& taps_;
  MainLoop& loop_;
  Alive alive_;
  std::unique_ptr<EventTap> tap_;
};

}  // namespace pellar
