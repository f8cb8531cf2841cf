#pragma once

#include <functional>
#include <utility>

#include "core/Alive.h"
#include "platform/MainLoop.h"
#include "platform/View.h"

namespace pellar {

// Whether the pointer is in a panel's view, as the view has been told: of its coming and its leaving, each
// once and in turn. A panel that leaves the screen takes the pointer out of its view, which hears of it from
// the main loop, but before anything else that the pointer does there. Main thread only.
class PointerPresence {
 public:
  // `view` names the panel's view, which may be null.
  PointerPresence(MainLoop& loop, std::function<View*()> view) : loop_(loop), view_(std::move(view)) {}
  PointerPresence(const PointerPresence&) = delete;
  PointerPresence& operator=(const PointerPresence&) = delete;

  // Whether the view knows it to be inside.
  [[nodiscard]] bool isInside() const { return inside_; }

  // Each tells the view what it does not know yet. False when the view has done away with this in answer.
  bool noteInside();
  bool noteOutside();

  // The panel left the screen.
  void panelLeft();

 private:
  // Tells of that now. False when the view has done away with this in answer.
  bool tellPanelLeft();

  MainLoop& loop_;
  std::function<View*()> view_;
  bool inside_ = false;
  bool panelLeft_ = false;  // and the view does not know yet
  Alive alive_;
};

}  // namespace pellar
