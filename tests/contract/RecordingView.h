#pragma once

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "platform/View.h"

namespace pellar::contract {

// A view that writes down what reaches it.
class RecordingView final : public View {
 public:
  std::vector<std::string> calls;  // mouse events by their names
  std::vector<MouseEvent> events;  // those that carry one
  int layouts = 0;
  int draws = 0;
  bool laidOutBeforeDrawing = true;
  AccessibleElement element;
  std::function<void(Canvas&)> paint;
  std::function<void()> onMouseDown;
  std::function<void()> onMouseEntered;

  void layout() override { ++layouts; }
  void draw(Canvas& canvas, const ViewRect& /*dirty*/) override {
    ++draws;
    laidOutBeforeDrawing = laidOutBeforeDrawing && layouts > 0;
    if (paint) paint(canvas);
  }
  void mouseDown(const MouseEvent& event) override {
    record("down", event);
    if (const auto callback = onMouseDown) callback();
  }
  void mouseDragged(const MouseEvent& event) override { record("dragged", event); }
  void mouseUp(const MouseEvent& event) override { record("up", event); }
  void rightMouseDown(const MouseEvent& event) override { record("right", event); }
  void otherMouseDown(const MouseEvent& event) override { record("middle", event); }
  void mouseEntered() override {
    calls.emplace_back("entered");
    if (const auto callback = onMouseEntered) callback();
  }
  void mouseMoved(const MouseEvent& event) override { record("moved", event); }
  void mouseExited() override { calls.emplace_back("exited"); }
  [[nodiscard]] AccessibleElement accessibleElement() const override { return element; }
  bool perform(AccessibleAction action, const std::string& id) override {
    calls.push_back((action == AccessibleAction::press ? "perform press " : "perform menu ") + id);
    return element.find(id) != nullptr;
  }

  [[nodiscard]] bool heard(const std::string& name) const {
    return std::find(calls.begin(), calls.end(), name) != calls.end();
  }
  void forget() {
    calls.clear();
    events.clear();
  }

 private:
  void record(const char* name, const MouseEvent& event) {
    calls.emplace_back(name);
    events.push_back(event);
  }
};

}  // namespace pellar::contract
