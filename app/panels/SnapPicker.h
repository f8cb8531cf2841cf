#pragma once

#include <memory>

#include "app/panels/CloseDelay.h"
#include "app/panels/SnapView.h"
#include "platform/MainLoop.h"
#include "platform/Panel.h"
#include "platform/ScreenList.h"

namespace pellar {

// The panel of screen layouts under the strip's zoom button. Main thread only.
class SnapPicker {
 public:
  // What it is given by reference outlives the picker. `onPick` is called when a tile is chosen; it may do
  // away with the picker.
  SnapPicker(PanelFactory& panels, MainLoop& loop, const ScreenList& screens, SnapView::PickHandler onPick);
  ~SnapPicker();
  SnapPicker(const SnapPicker&) = delete;
  SnapPicker& operator=(const SnapPicker&) = delete;

  // The pointer came to the zoom button, which lies at `under` on the screen. Shows the picker at once.
  void show(const ScreenRect& under);
  // The pointer left the button: the picker goes in a moment, unless the pointer enters it.
  void scheduleClose();
  void hide();

 private:
  const ScreenList& screens_;
  std::unique_ptr<Panel> panel_;
  SnapView view_;  // depends-on: panel_
  CloseDelay closing_;
};

}  // namespace pellar
