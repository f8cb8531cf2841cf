#pragma once

#include <memory>
#include <utility>

#include "platform/EventMonitors.h"
#include "platform/Panel.h"
#include "tests/contract/ContractTest.h"
#include "tests/contract/RecordingView.h"

namespace pellar::contract {

// A test with a panel on the screen over a window that has the focus.
class PanelTest : public ContractTest {
 protected:
  static constexpr ScreenRect place{200, 300, 400, 32};

  PanelTest() : pid(world().launch("editor")), window(world().open(pid, "Under.txt", {60, 100, 500, 300})) {
    elementOf(pid, "Under.txt");
    if (!wait([this] { return isInFront(pid); })) throw std::runtime_error("nothing comes to the front");
    PanelStyle style;
    style.contentSize = {400, 32};
    style.canBecomeKey = true;
    style.stationary = true;
    style.ignoresCycle = true;
    panel = world().platform().panels.makePanel(style);
  }
  ~PanelTest() override {
    if (panel) panel->setView(nullptr);
  }

  void show() {
    panel->setView(&view);
    panel->setFrame(place, true);
    panel->orderFrontRegardless();
    ASSERT_TRUE(wait([this] { return view.draws > 0; }));
    settle();
  }
  // Until no more repaints are under way.
  void settle() {
    int before = -1;
    while (before != view.draws) {
      before = view.draws;
      letPass(std::chrono::milliseconds(80));
    }
  }
  static ScreenPoint at(double x, double y) { return {place.x + x, place.maxY() - y}; }
  void click(ScreenPoint point) {
    world().pressLeft(point);
    world().releaseLeft();
  }

  RecordingView view;  // depends-on: nothing; the panel goes first
  ProcessId pid;
  WorldWindow window;
  std::unique_ptr<Panel> panel;
};

}  // namespace pellar::contract
