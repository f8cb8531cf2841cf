// The strip on windows that say of themselves what toolkits make them say.

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "tests/e2e/DesktopTest.h"

namespace pellar::e2e {

namespace {

class ToolkitWindows : public EveryWindowManager {
 protected:
  void waitUntilStripHasTabs(Window over, std::size_t count) {
    desktop.observer().waitUntil("the strip over the window has so many tabs",
                                 [&] { return strip.isOver(over) && strip.tabs().size() == count; });
  }
  // Above each of the others, so that nothing of it is covered.
  void waitUntilAbove(xcb_window_t window, const std::vector<Window>& others) {
    auto& observer = desktop.observer();
    observer.waitUntil("the window is above the others", [&] {
      for (const auto other : others) {
        if (observer.heightInStack(window) <= observer.heightInStack(other.id)) return false;
      }
      return true;
    });
  }
};

PELLAR_FOR_EVERY_WINDOW_MANAGER(ToolkitWindows);

TEST_P(ToolkitWindows, APaletteThatTaskBarsLeaveOutHasNoTab) {
  const auto report = editor().open("Report", {100, 200, 700, 400});
  const auto palette = editor().open("Brushes", {900, 200, 300, 400});
  editor().tell(palette, "type NORMAL");
  editor().tell(palette, "off-taskbar");
  desktop.observer().waitUntil("task bars leave it out", [&] {
    return desktop.observer().hasState(palette.id, "_NET_WM_STATE_SKIP_TASKBAR");
  });
  startPellar();
  waitUntilStripHasTabs(report, 1);
  const auto plan = editor().open("Plan", {160, 260, 700, 400});
  waitUntilStripHasTabs(plan, 2);
  desktop.activate(palette);
  waitUntilIdle();
  EXPECT_TRUE(strip.isOver(plan)) << "the window that the palette serves";
}

TEST_P(ToolkitWindows, WindowsThatADialogBlocksKeepTheirTabs) {
  const auto report = editor().open("Report", {100, 200, 700, 400});
  const auto plan = editor().open("Plan", {160, 260, 700, 400});
  const auto budget = editor().open("Budget", {220, 320, 700, 400});
  for (const auto window : {report, plan, budget}) editor().tell(window, "type NORMAL");
  startPellar();
  waitUntilStripHasTabs(budget, 3);

  // Java holds all windows that a dialog blocks below it, by chaining them one to another.
  const auto question = editor().openWithoutWaiting("Sure?", {400, 500, 260, 120});
  editor().tell(budget, "transient " + std::to_string(plan.id));
  editor().tell(plan, "transient " + std::to_string(report.id));
  editor().tell(question, "dialog " + std::to_string(budget.id));
  desktop.activate(question);
  waitUntilIdle();
  EXPECT_TRUE(strip.isOver(budget));
  EXPECT_EQ(strip.tabs().size(), 3U);
}

TEST_P(ToolkitWindows, ADialogThatCallsItselfANormalWindowHasNoTab) {
  const auto report = editor().open("Report", {100, 200, 700, 400});
  startPellar();
  waitUntilStripHasTabs(report, 1);
  const auto preferences = editor().openWithoutWaiting("Preferences", {300, 300, 400, 300});
  editor().tell(preferences, "type DIALOG");
  editor().tell(preferences, "transient " + std::to_string(report.id));
  editor().tell(preferences, "type NORMAL");
  desktop.activate(preferences);
  waitUntilIdle();
  EXPECT_TRUE(strip.isOver(report));
  EXPECT_EQ(strip.tabs().size(), 1U);
}

TEST_P(ToolkitWindows, TheQuestionOfAWindowClosedBehindAnotherIsSeen) {
  const auto report = editor().open("Report", {160, 200, 800, 400});
  const auto plan = editor().open("Plan", {160, 200, 800, 400});
  const auto budget = editor().open("Budget", {160, 200, 800, 400});
  for (const auto window : {report, plan, budget}) editor().tell(window, "asks");
  startPellar();
  waitUntilStripHasTabs(budget, 3);
  strip.clickTab(0, 2);
  std::optional<xcb_window_t> asked;
  desktop.observer().waitUntil("the question is there", [&] {
    asked = desktop.observer().clientTitled("Save changes?");
    return asked.has_value();
  });
  waitUntilAbove(*asked, {report, plan, budget});
  desktop.waitUntilActive({*asked});
}

TEST_P(ToolkitWindows, AWindowThatKeepsItsShapeIsZoomedBelowItsStripAndBack) {
  const auto film = editor().open("Film", {100, 200, 640, 480});
  editor().tell(film, "aspect 4 3");
  startPellar();
  strip.waitUntilOver(film);
  const auto before = desktop.frame(film);
  strip.clickWindowButton(WindowButton::zoom);
  desktop.observer().waitUntil("the window is as high as the screen below the strip", [&] {
    const auto frame = desktop.frame(film);
    return frame.x == 0 && frame.y == Strip::height && frame.height > 864 && frame.height <= 868;
  });
  waitUntilIdle();
  strip.waitUntilOver(film);
  EXPECT_EQ(desktop.frame(film).y, Strip::height);
  strip.clickWindowButton(WindowButton::zoom);
  desktop.observer().waitUntil("the window is back where it was",
                               [&] { return desktop.frame(film) == before; });
}

TEST_P(ToolkitWindows, ProgramsWhoseToolkitNamesTheirWindowsHaveTheirOwnStrips) {
  Application other(desktop, "Toplevel");
  const auto theirs = other.open("Theirs", {700, 200, 600, 300});
  Application main(desktop, "Notes");
  const auto notes = main.open("Notes", {100, 200, 600, 400});
  const auto note = main.open("Shopping", {160, 300, 600, 400});
  main.tell(note, "class Toplevel");
  startPellar();
  waitUntilStripHasTabs(note, 2);
  desktop.activate(notes);
  waitUntilStripHasTabs(notes, 2);
  desktop.activate(theirs);
  waitUntilStripHasTabs(theirs, 1);
}

}  // namespace

}  // namespace pellar::e2e
