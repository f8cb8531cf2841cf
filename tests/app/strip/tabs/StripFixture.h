#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "app/strip/tabs/TabStripView.h"
#include "tests/app/strip/tabs/DrawnItems.h"
#include "tests/app/strip/tabs/FakeViewHost.h"

namespace pellar {

// A strip of 1200 x 32 with the tabs Plan (101), Report (102) and Notes (103), each 164 wide, at 6, 174 and
// 342; the search field from 520 to 730 and the tools from 738 on. What its callbacks report is kept as
// words, in order.
class StripTest : public ::testing::Test {
 protected:
  StripTest() {
    listen();
    view.setTabs({tab(101, "Plan"), tab(102, "Report"), tab(103, "Notes")});
    view.layout();
    host.forgetRequests();
  }

  static TabItem tab(WindowId id, const std::string& label, bool active = false) {
    return {id, label, std::nullopt, active};
  }

  // `count` tabs named by their number, identified from 1 on.
  static std::vector<TabItem> numberedTabs(int count) {
    std::vector<TabItem> tabs;
    for (int i = 1; i <= count; ++i) tabs.push_back(tab(i, std::to_string(i)));
    return tabs;
  }

  [[nodiscard]] MouseEvent at(double x, double y = 16) const {
    return {{x, y}, host.onScreen({x, y}), false, 1};
  }
  [[nodiscard]] MouseEvent withControl(MouseEvent event) const {
    event.control = true;
    return event;
  }
  [[nodiscard]] MouseEvent secondClick(MouseEvent event) const {
    event.clickCount = 2;
    return event;
  }
  [[nodiscard]] MouseEvent on(StripAction action) const {
    const auto rect = view.geometry().toolRect(action);
    EXPECT_TRUE(rect.has_value());
    return rect ? at(rect->midX(), rect->midY()) : at(-1);
  }
  // In the middle of the tab with that label.
  [[nodiscard]] MouseEvent onTab(const std::string& label) const {
    const auto found = std::ranges::find(view.tabs(), label, &TabItem::label);
    if (found == view.tabs().end()) {
      ADD_FAILURE() << "no tab " << label;
      return at(-1);
    }
    const auto rect = view.geometry().tabRect(static_cast<std::size_t>(found - view.tabs().begin()));
    return at(rect.midX(), rect.midY());
  }
  // Between the last tab and the search field.
  [[nodiscard]] MouseEvent onEmptyStrip() const {
    const double from = view.geometry().tabRect(view.tabs().size() - 1).maxX();
    return at((from + view.geometry().searchFrame().minX()) / 2);
  }
  // On the close mark of a tab.
  [[nodiscard]] MouseEvent onClose(std::size_t index) const {
    const ViewRect square = StripLayout::closeSquare(view.geometry().tabRect(index));
    return at(square.midX(), square.midY());
  }

  void press(const MouseEvent& event) { view.mouseDown(pointer = event); }
  void dragTo(double x, double y = 16) { view.mouseDragged(pointer = at(x, y)); }
  void release(double x, double y = 16) { view.mouseUp(at(x, y)); }
  // Where the pointer is.
  void release() { view.mouseUp(pointer); }
  void moveTo(const MouseEvent& event) { view.mouseMoved(event); }
  void moveTo(double x, double y = 16) { moveTo(at(x, y)); }

  // What happened since the last call.
  std::vector<std::string> happened() { return std::exchange(events, {}); }

  [[nodiscard]] std::vector<DrawnItem> painted() { return painted(host.bounds()); }
  [[nodiscard]] std::vector<DrawnItem> painted(const ViewRect& dirty) { return pellar::painted(view, dirty); }

  template <class... Parts>
  static std::string words(const Parts&... parts) {
    std::ostringstream out;
    (out << ... << parts);
    return out.str();
  }

  void listen() {
    view.onSelect = [this](WindowId id) { events.push_back(words("select ", id)); };
    view.onClose = [this](WindowId id) { events.push_back(words("close ", id)); };
    view.onMenu = [this](WindowId id, const MouseEvent& event) {
      events.push_back(words("menu ", id, " at ", place(event)));
    };
    view.onAction = [this](StripAction action, const MouseEvent& event) {
      events.push_back(words("action ", static_cast<int>(action), " at ", place(event)));
    };
    view.onZoomHover = [this](std::optional<ScreenRect> rect) {
      events.push_back(rect ? words("zoom hover ", describe(*rect)) : "zoom hover none");
    };
    view.onReorder = [this](WindowId id, int index) {
      events.push_back(words("reorder ", id, " to ", index));
    };
    view.onDrag = [this](ScreenPoint offset) { events.push_back(words("drag ", offset.x, ',', offset.y)); };
    view.onDragEnd = [this] { events.push_back("drag end"); };
    view.onTabHover = [this](std::optional<WindowId> id, std::optional<ScreenRect> rect) {
      EXPECT_EQ(id.has_value(), rect.has_value());
      events.push_back(id && rect ? words("hover ", *id, " ", describe(*rect)) : "hover none");
    };
  }

  static std::string place(const MouseEvent& event) { return words(event.location.x, ',', event.location.y); }
  static std::string describe(const ScreenRect& rect) {
    return words(rect.x, ',', rect.y, ' ', rect.width, 'x', rect.height);
  }

  FakeViewHost host{Size{1200, 32}};
  TabStripView view{host};
  std::vector<std::string> events;
  MouseEvent pointer = at(-1);  // the last press or drag
};

}  // namespace pellar
