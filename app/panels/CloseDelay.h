#pragma once

#include <functional>

#include "platform/MainLoop.h"

namespace pellar {

// Closes a panel that hovering opened, a moment after the pointer has left both the panel and what opened it
// (its anchor): long enough to travel from one to the other. The reports of the two may come in either order.
// Main thread only.
class CloseDelay {
 public:
  // `close` is called from the main loop.
  CloseDelay(MainLoop& loop, std::function<void()> close);

  void anchorEntered();
  // Starts the delay anew, also when the pointer was not there.
  void anchorLeft();
  void panelEntered();
  void panelLeft();
  // The panel is closed: nothing is left to wait for.
  void reset();

 private:
  void start();

  MainLoop& loop_;
  std::function<void()> close_;
  bool inPanel_ = false;
  bool overAnchor_ = false;  // again, after it was in the panel
  Subscription timer_;
};

}  // namespace pellar
