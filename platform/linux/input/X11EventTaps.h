#pragma once

#include "platform/EventTap.h"

namespace pellar {

class MainLoop;

// Taps as passive grabs of the combination wanted.
//
// While a press waits for its decision the keyboard of the whole desktop waits. So a tap has a thread and a
// connection of its own, and lets the key go to its application when the main thread does not take the
// question up at once.
class X11EventTaps final : public EventTaps {
 public:
  explicit X11EventTaps(MainLoop& loop) : loop_(loop) {}

  // Refused while another program has grabbed the combination.
  [[nodiscard]] std::unique_ptr<EventTap> tapKeyDowns(const KeyCombination& wanted, Handler handler) override;

 private:
  MainLoop& loop_;
};

}  // namespace pellar
