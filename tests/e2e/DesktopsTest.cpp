// The strip where the window manager has several desktops, and when it is started anew.

#include <gtest/gtest.h>

#include <vector>

#include "tests/e2e/DesktopTest.h"

namespace pellar::e2e {

namespace {

class Desktops : public EveryWindowManager {
 protected:
  // Three windows of one program, the last one in front, and Pellar.
  void openThree() {
    report = editor().open("Report", {100, 160, 800, 400});
    plan = editor().open("Plan", {140, 200, 800, 400});
    budget = editor().open("Budget", {180, 240, 800, 400});
    startPellar();
    strip.waitUntilOver(budget);
    strip.waitUntilTabs(3);
  }
  void expectTabs(const std::vector<Window>& windows) {
    strip.waitUntilTabs(windows.size());
    EXPECT_EQ(strip.windowsBehindTabs(windows), windows);
  }

  Window report;
  Window plan;
  Window budget;
};

PELLAR_FOR_EVERY_WINDOW_MANAGER(Desktops);

TEST_P(Desktops, AWindowOfAnotherDesktopHasNoTabAndKeepsItsPlace) {
  openThree();
  strip.dragTab(0, 2);
  expectTabs({plan, budget, report});
  desktop.sendTo(1, budget);
  desktop.activate(report);
  strip.waitUntilOver(report);
  expectTabs({plan, report});

  desktop.showDesktop(1);
  desktop.activate(budget);
  strip.waitUntilOver(budget);
  strip.waitUntilTabs(1);

  desktop.showDesktop(0);
  desktop.activate(report);
  strip.waitUntilOver(report);
  strip.waitUntilTabs(2);
  desktop.sendTo(0, budget);
  expectTabs({plan, budget, report});
}

TEST_P(Desktops, AWindowOnAllDesktopsHasATabOnEach) {
  openThree();
  constexpr std::uint32_t all = 0xFFFFFFFF;
  desktop.sendTo(all, plan);
  desktop.sendTo(1, budget);
  desktop.activate(report);
  strip.waitUntilOver(report);
  expectTabs({report, plan});
  desktop.showDesktop(1);
  desktop.activate(budget);
  strip.waitUntilOver(budget);
  expectTabs({plan, budget});
}

TEST_P(Desktops, AnEmptyDesktopHasNoStripAndForgetsNothing) {
  openThree();
  strip.dragTab(0, 2);
  expectTabs({plan, budget, report});
  desktop.showDesktop(2);
  strip.waitUntilHidden();
  waitUntilIdle();
  EXPECT_FALSE(strip.window());
  desktop.showDesktop(0);
  desktop.activate(budget);
  strip.waitUntilOver(budget);
  expectTabs({plan, budget, report});
}

TEST_P(Desktops, AGroupIsDraggedWithoutTheWindowsOfOtherDesktops) {
  openThree();
  desktop.sendTo(1, plan);
  desktop.activate(budget);
  strip.waitUntilOver(budget);
  strip.waitUntilTabs(2);
  const auto before = desktop.frame(plan);
  const auto start = desktop.frame(budget);
  strip.dragEmptyPart(120, 90);
  desktop.observer().waitUntil("the group has moved",
                               [&] { return desktop.frame(budget).x == start.x + 120; });
  waitUntilIdle();
  EXPECT_EQ(desktop.frame(plan), before);
}

TEST_P(Desktops, AWindowManagerThatIsStartedAnewKeepsTheTabsInOrder) {
  openThree();
  strip.dragTab(0, 2);
  expectTabs({plan, budget, report});
  desktop.restartWindowManager();
  desktop.activate(plan);
  strip.waitUntilOver(plan);
  expectTabs({plan, budget, report});
  desktop.move(report, 300, 300);
  strip.waitUntilOver(report);
}

}  // namespace

}  // namespace pellar::e2e
