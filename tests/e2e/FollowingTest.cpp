// The strip stays on the focused window, whatever becomes of the windows.

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "tests/e2e/DesktopTest.h"

namespace pellar::e2e {

namespace {

using Following = EveryWindowManager;

PELLAR_FOR_EVERY_WINDOW_MANAGER(Following);

TEST_P(Following, AWindowThatWasThereBeforeGetsAStrip) {
  const auto report = editor().open("Report", {200, 200, 800, 400});
  startPellar();
  strip.waitUntilOver(report);
  strip.waitUntilTabs(1);
}

TEST_P(Following, AMovedWindowTakesTheStripAlong) {
  const auto report = editor().open("Report", {200, 200, 800, 400});
  startPellar();
  strip.waitUntilOver(report);
  for (const auto& [x, y] : std::vector<std::pair<int, int>>{{300, 260}, {301, 261}, {40, 440}, {620, 120}}) {
    desktop.move(report, x, y);
    strip.waitUntilOver(report);
  }
}

TEST_P(Following, AWindowDraggedByItsTitleBarTakesTheStripAlong) {
  const auto report = editor().open("Report", {200, 200, 600, 400});
  startPellar();
  strip.waitUntilOver(report);
  desktop.dragByTitleBar(report, 120, 80);
  strip.waitUntilOver(report);
}

TEST_P(Following, AResizedWindowResizesTheStrip) {
  const auto report = editor().open("Report", {200, 200, 800, 400});
  startPellar();
  strip.waitUntilOver(report);
  desktop.resize(report, 500, 300);
  strip.waitUntilOver(report);
  desktop.resize(report, 1000, 500);
  strip.waitUntilOver(report);
}

TEST_P(Following, AClickIntoAnotherWindowBringsTheStripThere) {
  const auto left = editor().open("Left", {40, 200, 600, 400});
  const auto right = editor().open("Right", {760, 300, 600, 400});
  startPellar();
  strip.waitUntilOver(right);
  desktop.observer().click(300, 400);
  strip.waitUntilOver(left);
  desktop.observer().click(1000, 500);
  strip.waitUntilOver(right);
}

TEST_P(Following, AnotherApplicationGetsItsOwnTabs) {
  const auto report = editor().open("Report", {40, 200, 600, 400});
  const auto plan = editor().open("Plan", {60, 240, 600, 400});
  Application terminal(desktop, "terminal");
  const auto shell = terminal.open("Shell", {760, 300, 600, 400});
  startPellar();
  strip.waitUntilOver(shell);
  strip.waitUntilTabs(1);
  desktop.activate(plan);
  strip.waitUntilOver(plan);
  strip.waitUntilTabs(2);
  desktop.activate(report);
  strip.waitUntilOver(report);
  desktop.activate(shell);
  strip.waitUntilOver(shell);
  strip.waitUntilTabs(1);
}

TEST_P(Following, AMinimisedWindowLosesTheStripUntilItIsBack) {
  const auto report = editor().open("Report", {200, 200, 800, 400});
  startPellar();
  strip.waitUntilOver(report);
  desktop.minimise(report);
  strip.waitUntilHidden();
  desktop.restore(report);
  strip.waitUntilOver(report);
}

TEST_P(Following, MinimisingOneOfTwoLeavesTheStripOnTheOther) {
  const auto report = editor().open("Report", {40, 200, 600, 400});
  const auto plan = editor().open("Plan", {760, 300, 600, 400});
  startPellar();
  strip.waitUntilOver(plan);
  desktop.minimise(plan);
  desktop.activate(report);
  strip.waitUntilOver(report);
  strip.waitUntilTabs(2);
  desktop.restore(plan);
  strip.waitUntilOver(plan);
}

TEST_P(Following, AFullScreenWindowHidesTheStripUntilItIsSmallAgain) {
  const auto report = editor().open("Report", {200, 200, 800, 400});
  startPellar();
  strip.waitUntilOver(report);
  desktop.enterFullScreen(report);
  strip.waitUntilHidden();
  desktop.leaveFullScreen(report);
  strip.waitUntilOver(report);
}

TEST_P(Following, NewAndClosedWindowsComeAndGoAsTabs) {
  const auto report = editor().open("Report", {200, 200, 800, 400});
  startPellar();
  strip.waitUntilTabs(1);
  const auto plan = editor().open("Plan", {300, 300, 700, 400});
  strip.waitUntilOver(plan);
  strip.waitUntilTabs(2);
  desktop.close(plan);
  desktop.activate(report);
  strip.waitUntilOver(report);
  strip.waitUntilTabs(1);
}

TEST_P(Following, ADialogGetsNoTab) {
  const auto report = editor().open("Report", {200, 200, 800, 400});
  startPellar();
  strip.waitUntilTabs(1);
  const auto question = editor().openWithoutWaiting("Save changes?", {400, 300, 420, 160});
  editor().tell(question, "dialog " + std::to_string(report.id));
  desktop.observer().waitUntil("the dialog is shown",
                               [&] { return desktop.observer().isViewable(question.id); });
  strip.waitUntilTabs(1);
}

TEST_P(Following, ClosingTheApplicationHidesTheStrip) {
  editor().open("Report", {200, 200, 800, 400});
  const auto plan = editor().open("Plan", {300, 300, 700, 400});
  startPellar();
  strip.waitUntilOver(plan);
  editor().quit();
  strip.waitUntilHidden();
}

TEST_P(Following, AKilledApplicationLeavesNoStripBehind) {
  const auto report = editor().open("Report", {200, 200, 800, 400});
  startPellar();
  strip.waitUntilOver(report);
  editor().process().signal(SIGKILL);
  strip.waitUntilHidden();
}

TEST_P(Following, AWindowAtTheTopOfTheScreenMakesRoomForTheStrip) {
  const auto report = editor().open("Report", {200, 200, 800, 400});
  startPellar();
  strip.waitUntilOver(report);
  desktop.observer().configure(report.id, XCB_CONFIG_WINDOW_Y, {0});
  desktop.observer().waitUntil("the window stands under the strip",
                               [&] { return desktop.frame(report).y == Strip::height; });
  strip.waitUntilOver(report);
}

TEST_P(Following, AMaximisedWindowHasItsStripOnTheScreen) {
  const auto report = editor().open("Report", {200, 200, 800, 400});
  startPellar();
  strip.waitUntilOver(report);
  desktop.maximise(report);
  desktop.observer().waitUntil("the window fills the width of the screen with its strip above it", [&] {
    const auto place = strip.box();
    return desktop.frame(report).width >= 1430 && place && place->y >= 0;
  });
  strip.waitUntilOver(report);
}

TEST_P(Following, AWindowWithItsOwnShadowHasTheStripOnItsVisibleEdge) {
  const auto report = editor().openWithShadow("Report", {200, 200, 800, 400}, 20);
  startPellar();
  strip.waitUntilOver(report);
  EXPECT_EQ(strip.box()->width, desktop.observer().box(report.id)->width - 40);
  desktop.observer().configure(report.id, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, {300, 300});
  strip.waitUntilOver(report);
}

TEST_P(Following, AWindowOpenedUnderneathAnotherDoesNotCoverTheStrip) {
  const auto report = editor().open("Report", {200, 200, 800, 400});
  const auto above = editor().open("Above", {220, 120, 700, 300});
  startPellar();
  strip.waitUntilOver(above);
  desktop.activate(report);
  strip.waitUntilOver(report);
  EXPECT_GT(desktop.observer().heightInStack(*strip.window()), desktop.observer().heightInStack(above.id));
}

}  // namespace

}  // namespace pellar::e2e
