// Under a window manager that tiles windows, and places the others in its own way.

#include <gtest/gtest.h>

#include "tests/e2e/DesktopTest.h"

namespace pellar::e2e {

namespace {

class Tiling : public DesktopTest {
 protected:
  Tiling() : DesktopTest(WindowManager::i3) {}
};

TEST_F(Tiling, AFloatingWindowAtTheTopMakesRoomAndStaysOnTheScreen) {
  const auto report = editor().open("Floating report", {300, 300, 600, 400});
  startPellar();
  strip.waitUntilOver(report);
  for (int time = 1; time <= 3; ++time) {
    SCOPED_TRACE(time);
    const auto before = desktop.frame(report);
    // The place that this window manager takes is the client's.
    const int above = desktop.observer().box(report.id)->y - before.y;
    desktop.observer().configure(report.id, XCB_CONFIG_WINDOW_Y, {0});
    desktop.observer().waitUntil("the window stands under the strip with its lower edge where it was", [&] {
      return desktop.frame(report) ==
             Box{before.x, Strip::height, before.width, before.height - above - Strip::height};
    });
    strip.waitUntilOver(report);
    waitUntilIdle();
    EXPECT_EQ(desktop.frame(report).y, Strip::height);
    EXPECT_EQ(desktop.frame(report).x, before.x);
  }
}

TEST_F(Tiling, ATiledWindowStaysInItsTile) {
  const auto report = editor().open("Report", {300, 300, 600, 400});
  const auto plan = editor().open("Plan", {300, 300, 600, 400});
  const auto left = desktop.frame(report);
  const auto right = desktop.frame(plan);
  startPellar();
  strip.waitUntilOver(plan);
  desktop.activate(report);
  strip.waitUntilOver(report);
  waitUntilIdle();
  EXPECT_EQ(desktop.frame(report), left);
  EXPECT_EQ(desktop.frame(plan), right);
}

}  // namespace

}  // namespace pellar::e2e
