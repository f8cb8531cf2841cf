// What the mouse does on the strip.

#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>

#include "tests/e2e/DesktopTest.h"
#include "tests/e2e/Keys.h"

namespace pellar::e2e {

namespace {

class Tabs : public EveryWindowManager {
 protected:
  // Five windows of one program, the last one in front, and Pellar.
  std::vector<Window> openFive() {
    std::vector<Window> all;
    int offset = 0;
    for (const char* title : {"Report", "Plan", "Budget", "Letter", "Notes"}) {
      all.push_back(editor().open(title, {60 + offset, 120 + offset, 900, 400}));
      offset += 60;
    }
    startPellar();
    strip.waitUntilOver(all.back());
    strip.waitUntilTabs(all.size());
    return all;
  }
};

PELLAR_FOR_EVERY_WINDOW_MANAGER(Tabs);

TEST_P(Tabs, EachOfFiveFocusesExactlyItsWindow) {
  const auto all = openFive();
  EXPECT_EQ(strip.windowsBehindTabs(all), all);
}

TEST_P(Tabs, FiveTabsWorkWithXdotoolToo) {
  const auto all = openFive();
  for (std::size_t index = 0; index < all.size(); ++index) {
    strip.waitUntilTabs(all.size());
    const auto place = *strip.box();
    const auto marker = strip.tabs()[index].marker;
    desktop.run({"xdotool", "mousemove", std::to_string(place.x + marker), std::to_string(place.y + 16),
                 "click", "1"});
    strip.waitUntilOver(all[index]);
  }
}

TEST_P(Tabs, ATabOfAMinimisedWindowBringsItBack) {
  const auto all = openFive();
  desktop.minimise(all[1]);
  desktop.activate(all[4]);
  strip.waitUntilOver(all[4]);
  strip.waitUntilTabs(5);
  strip.clickTab(1);
  strip.waitUntilOver(all[1]);
}

TEST_P(Tabs, ADraggedTabStaysWhereItWasDropped) {
  auto all = openFive();
  strip.dragTab(0, 2);
  std::vector<Window> wanted{all[1], all[2], all[0], all[3], all[4]};
  EXPECT_EQ(strip.windowsBehindTabs(wanted), wanted);

  // It stays through what happens later.
  const auto extra = editor().open("Extra", {200, 300, 900, 400});
  strip.waitUntilOver(extra);
  wanted.push_back(extra);
  EXPECT_EQ(strip.windowsBehindTabs(wanted), wanted);
  editor().setTitle(all[3], "Letter to Ann");
  desktop.move(extra, 260, 330);
  strip.waitUntilOver(extra);
  desktop.close(all[4]);
  std::erase(wanted, all[4]);
  desktop.activate(all[1]);
  strip.waitUntilOver(all[1]);
  EXPECT_EQ(strip.windowsBehindTabs(wanted), wanted);
}

TEST_P(Tabs, AMiddleClickClosesTheWindow) {
  const auto all = openFive();
  strip.clickTab(1, 2);
  desktop.observer().waitUntil("the window is closed", [&] { return !desktop.observer().box(all[1].id); });
  strip.waitUntilTabs(4);
  EXPECT_EQ(strip.windowsBehindTabs({all[0], all[2], all[3], all[4]}),
            (std::vector<Window>{all[0], all[2], all[3], all[4]}));
}

TEST_P(Tabs, TheCloseMarkClosesTheWindow) {
  const auto report = editor().open("Report", {60, 120, 900, 400});
  const auto plan = editor().open("Plan", {120, 180, 900, 400});
  startPellar();
  strip.waitUntilTabs(2);
  strip.clickCloseMark(0);
  desktop.observer().waitUntil("the window is closed", [&] { return !desktop.observer().box(report.id); });
  strip.waitUntilTabs(1);
  strip.waitUntilOver(plan);
}

TEST_P(Tabs, TheWindowButtonsMinimiseZoomAndClose) {
  const auto report = editor().open("Report", {60, 120, 900, 400});
  startPellar();
  strip.waitUntilOver(report);

  const auto before = desktop.frame(report);
  strip.clickWindowButton(WindowButton::zoom);
  desktop.observer().waitUntil("the window fills the screen below the strip", [&] {
    const auto frame = desktop.frame(report);
    return frame.x == 0 && frame.y == Strip::height && frame.width > 1438 && frame.height > 866;
  });
  strip.waitUntilOver(report);
  strip.clickWindowButton(WindowButton::zoom);
  desktop.observer().waitUntil("the window is back where it was",
                               [&] { return desktop.frame(report) == before; });
  strip.waitUntilOver(report);

  strip.clickWindowButton(WindowButton::minimise);
  desktop.observer().waitUntil("the window is minimised",
                               [&] { return desktop.observer().managedState(report.id) == 3; });
  strip.waitUntilHidden();
  desktop.restore(report);
  // Some window managers let it grow out of its icon, and the strip goes along.
  desktop.observer().waitUntil("the window is back where it was",
                               [&] { return desktop.frame(report) == before; });
  strip.waitUntilOver(report);

  strip.clickWindowButton(WindowButton::close);
  desktop.observer().waitUntil("the window is closed", [&] { return !desktop.observer().box(report.id); });
  strip.waitUntilHidden();
}

TEST_P(Tabs, WhatAWindowDidBeforeAPressCountsFirst) {
  const auto report = editor().open("Report", {60, 120, 900, 400});
  startPellar();
  strip.waitUntilOver(report);
  // Pellar hears of both at once: the window was moved, and then its zoom button was clicked.
  pellar->signal(SIGSTOP);
  desktop.move(report, 100, 200);
  const auto moved = desktop.frame(report);
  strip.clickWindowButton(WindowButton::zoom);
  pellar->signal(SIGCONT);
  desktop.observer().waitUntil("the window fills the screen",
                               [&] { return desktop.frame(report).width >= 1438; });
  strip.waitUntilOver(report);
  strip.clickWindowButton(WindowButton::zoom);
  desktop.observer().waitUntil("it is back where it was moved to",
                               [&] { return desktop.frame(report) == moved; });
  strip.waitUntilOver(report);
}

TEST_P(Tabs, WhatAWindowDidAfterAPressCountsLater) {
  Application terminal(desktop, "terminal");
  const auto shell = terminal.open("Shell", {200, 500, 900, 300});
  const auto report = editor().open("Report", {60, 120, 900, 300});
  const auto plan = editor().open("Plan", {60, 120, 900, 300});
  startPellar();
  strip.waitUntilOver(plan);
  strip.waitUntilTabs(2);
  waitUntilIdle();
  // Pellar hears of both at once: the close button was clicked, and then another program came to the front.
  pellar->signal(SIGSTOP);
  strip.clickWindowButton(WindowButton::close);
  desktop.activate(shell);
  pellar->signal(SIGCONT);
  desktop.observer().waitUntil("the window that was in front then is closed",
                               [&] { return !desktop.observer().box(plan.id).has_value(); });
  strip.waitUntilOver(shell);
  EXPECT_TRUE(desktop.observer().box(shell.id).has_value());
  EXPECT_TRUE(desktop.observer().box(report.id).has_value());
}

TEST_P(Tabs, DraggingTheEmptyStripMovesTheWindow) {
  const auto report = editor().open("Report", {60, 120, 1000, 400});
  startPellar();
  strip.waitUntilOver(report);
  strip.waitUntilTabs(1);
  const auto before = desktop.frame(report);
  const auto place = *strip.box();
  desktop.drag(place.x + 230, place.y + 16, place.x + 330, place.y + 76);
  desktop.observer().waitUntil("the window moved with the pointer", [&] {
    const auto frame = desktop.frame(report);
    return frame.x == before.x + 100 && frame.y == before.y + 60;
  });
  strip.waitUntilOver(report);
}

TEST_P(Tabs, WindowsStackedBehindEachOtherMoveTogether) {
  const auto report = editor().open("Report", {60, 120, 1000, 400});
  const auto plan = editor().open("Plan", {60, 120, 1000, 400});
  const auto apart = editor().open("Apart", {300, 420, 1000, 300});
  startPellar();
  desktop.activate(plan);
  strip.waitUntilOver(plan);
  strip.waitUntilTabs(3);
  const auto before = desktop.frame(plan);
  const auto apartBefore = desktop.frame(apart);
  ASSERT_EQ(desktop.frame(report), before);
  strip.dragEmptyPart(40, 50);
  for (const auto window : {plan, report}) {
    desktop.observer().waitUntil("the window moved with the pointer", [&] {
      const auto frame = desktop.frame(window);
      return frame.x == before.x + 40 && frame.y == before.y + 50;
    });
  }
  EXPECT_EQ(desktop.frame(apart), apartBefore);
  strip.waitUntilOver(plan);
}

TEST_P(Tabs, TheKeyboardStaysWithTheApplicationThroughClicksOnTheStrip) {
  const auto all = openFive();
  const auto place = *strip.box();
  // Above the tabs the strip is empty.
  desktop.observer().click(place.x + place.width / 2, place.y + 1);
  desktop.observer().fence();
  EXPECT_TRUE(desktop.isActive(all[4]));
  strip.clickTab(0);
  strip.waitUntilOver(all[0]);
}

TEST(WindowCycle, AltTabNeverMeetsTheStrip) {
  Desktop desktop(WindowManager::openbox);
  Strip strip(desktop);
  Application editor(desktop, "editor");
  const auto report = editor.open("Report", {60, 120, 600, 400});
  const auto plan = editor.open("Plan", {700, 120, 600, 400});
  auto pellar = desktop.start({builtProgram("pellar")}, "pellar");
  strip.waitUntilOver(plan);
  for (const auto next : {report, plan, report}) {
    desktop.observer().key(altKey, true);
    desktop.observer().key(tabKey, true);
    desktop.observer().key(tabKey, false);
    // Letting go of the key chooses the window, once the window manager has the keyboard.
    desktop.observer().waitUntil("the cycle is shown", [&] {
      const auto all = desktop.observer().topLevels();
      return std::ranges::any_of(all, [&](xcb_window_t window) {
        return desktop.observer().text(window, "WM_CLASS").starts_with("OPENBOX_FOCUS_CYCLE") &&
               desktop.observer().isViewable(window);
      });
    });
    desktop.observer().key(altKey, false);
    strip.waitUntilOver(next);
  }
  EXPECT_EQ(pellar->end().exitCode, 0);
}

}  // namespace

}  // namespace pellar::e2e
