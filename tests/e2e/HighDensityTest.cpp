// Desktops on which a point has more than one pixel.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/e2e/DesktopTest.h"
#include "tests/e2e/Keys.h"
#include "tests/e2e/PopUpMenu.h"
#include "tests/e2e/RecentPanel.h"

namespace pellar::e2e {

namespace {

// A large screen at 200 %.
class DoubleDensity : public DesktopTest, public ::testing::WithParamInterface<WindowManager> {
 protected:
  DoubleDensity() : DesktopTest(GetParam(), {2880, 1800}) {
    desktop.setFontDots("192");
    strip.setScale(2);
  }
  // Three windows of one program, the last in front, and Pellar.
  std::vector<Window> openThree() {
    std::vector<Window> all;
    int offset = 0;
    for (const char* title : {"Report", "Plan", "Budget"}) {
      all.push_back(editor().open(title, {121 + offset, 321 + offset, 2001, 800}));
      offset += 121;
    }
    startPellar();
    strip.waitUntilOver(all.back());
    strip.waitUntilTabs(all.size());
    return all;
  }
};

PELLAR_FOR_EVERY_WINDOW_MANAGER(DoubleDensity);

TEST_P(DoubleDensity, EachTabFocusesItsWindow) {
  const auto all = openThree();
  EXPECT_EQ(strip.windowsBehindTabs(all), all);
}

TEST_P(DoubleDensity, TheStripIsTwiceAsHighAndEndsAtTheWindowToThePixel) {
  const auto all = openThree();
  for (int step = 0; step < 4; ++step) {
    desktop.move(all.back(), 301 + step, 401 + step);
    desktop.observer().waitUntil("the strip stands on the window", [&] {
      const auto frame = desktop.frame(all.back());
      return strip.box() == Box{frame.x, frame.y - 64, frame.width, 64};
    });
  }
}

TEST_P(DoubleDensity, TheCloseMarkClosesItsWindowAlone) {
  auto all = openThree();
  strip.clickCloseMark(0);
  desktop.observer().waitUntil("the window is closed",
                               [&] { return !desktop.observer().box(all[0].id).has_value(); });
  strip.waitUntilTabs(2);
  strip.waitUntilOver(all[2]);
}

TEST_P(DoubleDensity, ADraggedTabStaysWhereItWasDropped) {
  const auto all = openThree();
  strip.dragTab(0, 2);
  const std::vector<Window> wanted{all[1], all[2], all[0]};
  EXPECT_EQ(strip.windowsBehindTabs(wanted), wanted);
}

TEST_P(DoubleDensity, TheMenuOpensWhereTheTabWasClicked) {
  const auto all = openThree();
  PopUpMenu menu(desktop, *pellar);
  const auto place = *strip.box();
  const int marker = strip.tabs().at(1).marker;
  strip.clickTab(1, 3);
  menu.waitUntilOpen();
  const auto box = menu.box();
  EXPECT_NEAR(box.x, place.x + marker, 4);
  EXPECT_NEAR(box.y, place.y + 32, 4);
  // An item of the toolkit's is some twenty points high, and there are eleven rows.
  EXPECT_GT(box.height, 300);
  menu.choose(1);
  desktop.observer().waitUntil("the window is closed",
                               [&] { return !desktop.observer().box(all[1].id).has_value(); });
  strip.waitUntilTabs(2);
}

TEST_P(DoubleDensity, TheStripDragsItsWindowsAlongAsFarAsThePointerGoes) {
  const auto all = openThree();
  const auto before = desktop.frame(all.back());
  strip.dragEmptyPart(90, 51);
  desktop.observer().waitUntil("the window came along", [&] {
    const auto now = desktop.frame(all.back());
    return now.x == before.x + 90 && now.y == before.y + 51;
  });
  strip.waitUntilOver(all.back());
}

TEST_P(DoubleDensity, AWindowAtTheTopMakesRoomForALargeStrip) {
  const auto all = openThree();
  desktop.observer().configure(all.back().id, XCB_CONFIG_WINDOW_Y, {0});
  desktop.observer().waitUntil("the window stands under the strip",
                               [&] { return desktop.frame(all.back()).y == 64; });
  strip.waitUntilOver(all.back());
}

TEST_P(DoubleDensity, TheSearchIsLargeTakesKeysAndMarksARow) {
  const auto documents = desktop.folders().home() / "Documents";
  for (const char* name : {"Plan.txt", "Minutes.txt"})
    desktop.folders().write(documents / name, "Some text.\n");
  desktop.folders().remember({documents / "Plan.txt", documents / "Minutes.txt"}, "editor");
  const auto report = editor().open("Report", {121, 321, 2401, 800});
  startPellar();
  strip.waitUntilOver(report);
  RecentPanel recent(desktop, strip);
  recent.openByClickOnTheField();
  recent.waitUntilRows(2);
  desktop.observer().type("plan");
  recent.waitUntilRows(1);
  desktop.observer().strike(downKey);
  recent.waitUntilSelected(0);
  desktop.observer().strike(escapeKey);
  desktop.observer().strike(escapeKey);
  recent.waitUntilClosed();
}

class ScaledDesktopTest : public DesktopTest {
 protected:
  using DesktopTest::DesktopTest;

  // Returns when the strip is over the window at that scale, to the pixel.
  void waitUntilScaled(Window window, double scale) {
    strip.setScale(scale);
    desktop.observer().waitUntil("the strip is " + std::to_string(scale) + " times as large", [&] {
      const auto frame = desktop.frame(window);
      const int high = strip.pixels(Strip::height);
      return strip.box() == Box{frame.x, frame.y - high, frame.width, high};
    });
  }
};

// What a user changes while Pellar runs.
class ChangedDensity : public ScaledDesktopTest {};

TEST_F(ChangedDensity, TheStripTakesItsNewSizeAtOnce) {
  const auto report = editor().open("Report", {60, 160, 1000, 400});
  const auto plan = editor().open("Plan", {101, 203, 1001, 401});
  startPellar();
  waitUntilScaled(plan, 1);
  for (const auto& [dots, scale] :
       {std::pair("120", 1.25), std::pair("144", 1.5), std::pair("168", 1.75), std::pair("96", 1.0)}) {
    desktop.setFontDots(dots);
    waitUntilScaled(plan, scale);
    strip.waitUntilTabs(2);
    EXPECT_EQ(strip.windowsBehindTabs({report, plan}), (std::vector{report, plan}));
  }
}

TEST_F(ChangedDensity, NonsenseLeavesItAsItIsAndIsSaidOnce) {
  const auto report = editor().open("Report", {60, 160, 1000, 400});
  startPellar();
  waitUntilScaled(report, 1);
  for (const char* dots : {"a lot", "a lot", "144"}) desktop.setFontDots(dots);
  waitUntilScaled(report, 1.5);
  desktop.setFontDots("-192");
  waitUntilScaled(report, 1);
  EXPECT_EQ(logLines("Xft.dpi is -192"), 1);
}

// A monitor at 100 %, named "plain", and one at 200 %, named "fine".
class TwoDensities : public ScaledDesktopTest {
 protected:
  TwoDensities(ScreenSize screen, const std::string& plain, const std::string& fine)
      : ScaledDesktopTest(WindowManager::openbox, screen) {
    desktop.run({"xrandr", "--setmonitor", "plain", plain, "screen"});
    desktop.run({"xrandr", "--setmonitor", "fine", fine, "none"});
  }
  // With what some desktops tell every program of their monitors.
  void startPellar() {
    desktop.folders().settleIn();
    auto variables = desktop.environment();
    variables["QT_SCREEN_SCALE_FACTORS"] = "plain=1;fine=2;";
    pellar = std::make_unique<Process>(std::vector{builtProgram("pellar")}, variables,
                                       desktop.folders().root() / "pellar.errors");
  }
};

// The fine one on the right.
class MixedDensity : public TwoDensities {
 protected:
  MixedDensity() : TwoDensities({2880, 1200}, "1280/340x1200/320+0+0", "1600/340x1200/320+1280+0") {}
};

TEST_F(MixedDensity, TheStripIsAsLargeAsTheMonitorThatHoldsMostOfTheWindow) {
  const auto report = editor().open("Report", {60, 160, 1001, 400});
  const auto plan = editor().open("Plan", {100, 260, 1401, 401});
  startPellar();
  waitUntilScaled(plan, 1);
  strip.waitUntilTabs(2);
  desktop.move(plan, 1401, 301);
  waitUntilScaled(plan, 2);
  strip.waitUntilTabs(2);
  desktop.move(plan, 561, 301);
  waitUntilScaled(plan, 1);
  desktop.move(plan, 601, 301);
  waitUntilScaled(plan, 2);
  strip.waitUntilTabs(2);
  strip.clickTab(0);
  waitUntilScaled(report, 1);
  strip.clickTab(1);
  waitUntilScaled(plan, 2);
}

TEST_F(MixedDensity, AWindowAtTheTopOfTheFineMonitorMakesRoomForItsStrip) {
  const auto report = editor().open("Report", {1401, 301, 901, 401});
  startPellar();
  waitUntilScaled(report, 2);
  desktop.observer().configure(report.id, XCB_CONFIG_WINDOW_Y, {0});
  desktop.observer().waitUntil("the window stands under the strip",
                               [&] { return desktop.frame(report).y == 64; });
  waitUntilScaled(report, 2);
}

TEST_F(MixedDensity, AMenuOnTheFineMonitorOpensWhereItWasAskedFor) {
  editor().open("Report", {60, 160, 1001, 400});
  const auto plan = editor().open("Plan", {1401, 301, 1201, 401});
  startPellar();
  waitUntilScaled(plan, 2);
  strip.waitUntilTabs(2);
  PopUpMenu menu(desktop, *pellar);
  const auto place = *strip.box();
  const int marker = strip.tabs().at(0).marker;
  strip.clickTab(0, 3);
  menu.waitUntilOpen();
  EXPECT_NEAR(menu.box().x, place.x + marker, 4);
  EXPECT_NEAR(menu.box().y, place.y + 32, 4);
  desktop.observer().strike(escapeKey);
  menu.waitUntilClosed();
}

TEST_F(MixedDensity, AWindowDraggedByItsStripStaysUnderThePointerOnBothMonitors) {
  editor().open("Report", {400, 300, 801, 401});
  const auto plan = editor().open("Plan", {200, 300, 801, 401});
  startPellar();
  waitUntilScaled(plan, 1);
  strip.waitUntilTabs(2);
  const int width = desktop.frame(plan).width;
  const auto place = *strip.box();
  const int empty = strip.endOfTabs() + 5;
  desktop.observer().movePointer(place.x + empty, place.y + Strip::height / 2);
  desktop.observer().press(1);
  int before = desktop.frame(plan).x;
  for (int pointer = place.x + empty; pointer < 1900; pointer += 40) {
    desktop.observer().movePointer(pointer, 500);
    waitUntilIdle();
    EXPECT_GE(desktop.frame(plan).x, before) << "with the pointer at " << pointer;
    before = desktop.frame(plan).x;
  }
  desktop.observer().release(1);
  waitUntilScaled(plan, 2);
  EXPECT_EQ(desktop.frame(plan).width, width);
  // It is held at the same point of its strip, which is twice as many pixels from the edge now.
  EXPECT_NEAR(desktop.observer().pointer().x - desktop.frame(plan).x, 2 * empty, 4);
}

// The fine one below.
class StackedDensity : public TwoDensities {
 protected:
  StackedDensity() : TwoDensities({1600, 1800}, "1600/340x600/320+0+0", "1600/340x1200/320+0+600") {}
};

TEST_F(StackedDensity, AWindowThatReachesIntoTheMonitorAboveKeepsItsStripAndItsScale) {
  const auto report = editor().open("Report", {101, 901, 1001, 601});
  startPellar();
  waitUntilScaled(report, 2);
  desktop.move(report, 101, 581);
  waitUntilScaled(report, 2);
  desktop.move(report, 101, 301);
  waitUntilScaled(report, 2);
  desktop.move(report, 101, 201);
  waitUntilScaled(report, 1);
}

}  // namespace

}  // namespace pellar::e2e
