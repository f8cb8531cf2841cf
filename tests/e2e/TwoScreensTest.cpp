// One desktop over two screens.

#include <gtest/gtest.h>

#include "tests/e2e/DesktopTest.h"

namespace pellar::e2e {

namespace {

class TwoScreens : public DesktopTest {
 protected:
  TwoScreens() {
    desktop.run({"xrandr", "--setmonitor", "left", "720/190x900/240+0+0", "screen"});
    desktop.run({"xrandr", "--setmonitor", "right", "720/190x900/240+720+0", "none"});
  }
};

TEST_F(TwoScreens, TheStripFollowsFromOneToTheOther) {
  const auto report = editor().open("Report", {60, 160, 500, 400});
  startPellar();
  strip.waitUntilOver(report);
  desktop.move(report, 800, 200);
  strip.waitUntilOver(report);
  desktop.move(report, 500, 300);
  strip.waitUntilOver(report);
}

TEST_F(TwoScreens, ZoomFillsTheScreenThatTheWindowIsOn) {
  const auto report = editor().open("Report", {800, 160, 500, 400});
  startPellar();
  strip.waitUntilOver(report);
  strip.clickWindowButton(WindowButton::zoom);
  desktop.observer().waitUntil("the window fills the right screen", [&] {
    const auto frame = desktop.frame(report);
    return frame.x == 720 && frame.y == Strip::height && frame.width >= 718 && frame.width <= 720;
  });
  strip.waitUntilOver(report);
}

TEST_F(TwoScreens, AWindowAtTheTopOfTheSecondScreenMakesRoom) {
  const auto report = editor().open("Report", {800, 160, 500, 400});
  startPellar();
  strip.waitUntilOver(report);
  desktop.observer().configure(report.id, XCB_CONFIG_WINDOW_Y, {0});
  desktop.observer().waitUntil("the window stands under the strip",
                               [&] { return desktop.frame(report).y == Strip::height; });
  strip.waitUntilOver(report);
}

}  // namespace

}  // namespace pellar::e2e
