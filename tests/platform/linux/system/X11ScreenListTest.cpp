#include <xcb/xcb.h>

#include <cstdint>
#include <vector>

#include "tests/platform/linux/X11WorldTest.h"

namespace pellar::contract {
namespace {

class X11ScreenListTest : public X11WorldTest {
 protected:
  ~X11ScreenListTest() override {
    for (const char* name : monitors) desktop().run({"xrandr", "--delmonitor", name});
    auto& observer = desktop().observer();
    for (const xcb_window_t dock : docks) xcb_destroy_window(observer.connection(), dock);
    observer.fence();
    observer.waitUntil("the docks are gone", [&] { return observer.clients().empty(); });
  }

  std::vector<Screen> screens() { return x11().platform().screens.screens(); }

  void splitIntoTwo() {
    desktop().run({"xrandr", "--setmonitor", "left", "720/190x900/240+0+0", "screen"});
    monitors.push_back("left");
    desktop().run({"xrandr", "--setmonitor", "right", "720/190x900/240+720+0", "none"});
    monitors.push_back("right");
  }

  // A panel at the bottom edge that keeps `depth` pixels from `first` to `last` for itself.
  void openDock(std::uint32_t depth, std::uint32_t first, std::uint32_t last) {
    auto& observer = desktop().observer();
    xcb_connection_t* connection = observer.connection();
    const xcb_window_t dock = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, dock, observer.root(),
                      static_cast<std::int16_t>(first), static_cast<std::int16_t>(900 - depth),
                      static_cast<std::uint16_t>(last - first + 1), static_cast<std::uint16_t>(depth), 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    docks.push_back(dock);
    const std::uint32_t type = observer.atom("_NET_WM_WINDOW_TYPE_DOCK");
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, dock, observer.atom("_NET_WM_WINDOW_TYPE"),
                        XCB_ATOM_ATOM, 32, 1, &type);
    const std::uint32_t strut[12] = {0, 0, 0, depth, 0, 0, 0, 0, 0, 0, first, last};
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, dock, observer.atom("_NET_WM_STRUT_PARTIAL"),
                        XCB_ATOM_CARDINAL, 32, 12, strut);
    xcb_map_window(connection, dock);
    observer.fence();
  }

  std::vector<const char*> monitors;
  std::vector<xcb_window_t> docks;
};

TEST_F(X11ScreenListTest, APanelTakesItsPartOfTheScreenAndGivesItBack) {
  ASSERT_EQ(screens().size(), 1U);
  EXPECT_EQ(screens()[0], (Screen{{0, 0, 1440, 900}, {0, 0, 1440, 900}}));
  openDock(30, 0, 1439);
  EXPECT_TRUE(wait([&] { return screens()[0].visibleFrame == ScreenRect{0, 30, 1440, 870}; }));
  xcb_destroy_window(desktop().observer().connection(), docks.back());
  docks.clear();
  desktop().observer().fence();
  EXPECT_TRUE(wait([&] { return screens()[0].visibleFrame == ScreenRect{0, 0, 1440, 900}; }));
}

TEST_F(X11ScreenListTest, SaysWhenAPanelComesAndWhenAScreenComes) {
  int told = 0;
  const auto subscription = x11().platform().screens.onChanged([&told] { ++told; });
  openDock(30, 0, 1439);
  EXPECT_TRUE(wait([&told] { return told > 0; }));
  ASSERT_TRUE(wait([&] { return screens()[0].visibleFrame.height == 870; }));
  const int before = told;
  splitIntoTwo();
  EXPECT_TRUE(wait([&] { return told > before; }));
}

TEST_F(X11ScreenListTest, APanelOnOneOfTwoScreensLeavesTheOtherWhole) {
  splitIntoTwo();
  ASSERT_TRUE(wait([&] { return screens().size() == 2; }));
  EXPECT_EQ(screens()[0].frame, (ScreenRect{0, 0, 720, 900}));
  EXPECT_EQ(screens()[1].frame, (ScreenRect{720, 0, 720, 900}));
  openDock(40, 720, 1439);
  EXPECT_TRUE(wait([&] { return screens()[1].visibleFrame == ScreenRect{720, 40, 720, 860}; }));
  EXPECT_EQ(screens()[0].visibleFrame, (ScreenRect{0, 0, 720, 900}));
}

}  // namespace
}  // namespace pellar::contract
