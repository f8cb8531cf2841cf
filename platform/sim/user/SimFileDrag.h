#pragma once

#include "platform/sim/panel/SimPanels.h"
#include "platform/sim/system/SimMainLoop.h"

namespace pellar {

// A file that the user drags out of another application. Each call returns when the loop is idle again.
class SimFileDrag {
 public:
  SimFileDrag(SimMainLoop& loop, SimPanels& panels) : loop_(loop), panels_(panels) {}

  void moveTo(ScreenPoint point);
  // Lets go of the file, or gives the drag up: no panel takes it.
  void end();

 private:
  void leave();

  SimMainLoop& loop_;
  SimPanels& panels_;
  SimPanel* over_ = nullptr;  // the panel under the file; may be gone
};

}  // namespace pellar
