// What the user does to a window by its title bar, and what the window manager does with it, comes out as if
// there were no strip: no size is lost on the way.

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>

#include "tests/e2e/DesktopTest.h"
#include "tests/e2e/Keys.h"

namespace pellar::e2e {

namespace {

class WindowStates : public EveryWindowManager {
 protected:
  // Drags the window that is held by its title bar until its top stands there, give or take the step by which
  // the window manager took hold of it late.
  void dragTopTo(Window window, int y) {
    int wobble = 0;
    desktop.observer().waitUntil("the window is dragged to " + std::to_string(y), [&] {
      wobble = 1 - wobble;
      desktop.observer().movePointer(x_ + wobble, y + depth_);
      return std::abs(desktop.frame(window).y - y) <= 4;
    });
  }
  void takeByTitleBar(Window window) {
    const auto frame = desktop.frame(window);
    x_ = frame.x + frame.width / 2;
    desktop.observer().movePointer(x_, frame.y + depth_);
    desktop.observer().press(1);
  }
  void waitUntilFrame(Window window, const Box& frame) {
    desktop.observer().waitUntil("the frame is " + describe(frame),
                                 [&] { return desktop.frame(window) == frame; });
  }

 private:
  static constexpr int depth_ = 10;
  int x_ = 0;
};

PELLAR_FOR_EVERY_WINDOW_MANAGER(WindowStates);

TEST_P(WindowStates, AWindowDraggedToTheTopAndBackFourTimesHasItsSizeStill) {
  const auto report = editor().open("Report", {200, 200, 600, 500});
  startPellar();
  strip.waitUntilOver(report);
  const auto before = desktop.frame(report);
  for (int time = 0; time < 4; ++time) {
    takeByTitleBar(report);
    for (const int y : {100, 40, 16}) dragTopTo(report, y);
    strip.waitUntilOver(report);
    waitUntilIdle();
    for (const int y : {40, 100, 200}) dragTopTo(report, y);
    desktop.observer().release(1);
    strip.waitUntilOver(report);
    waitUntilIdle();
    EXPECT_EQ(desktop.frame(report).width, before.width);
    EXPECT_EQ(desktop.frame(report).height, before.height);
  }
}

TEST_P(WindowStates, AWindowLeftAtTheTopMakesRoomOnceTheButtonIsReleased) {
  const auto report = editor().open("Report", {200, 200, 600, 500});
  startPellar();
  strip.waitUntilOver(report);
  takeByTitleBar(report);
  dragTopTo(report, 16);
  waitUntilIdle();
  EXPECT_NEAR(desktop.frame(report).y, 16, 4) << "the window is the user's while the button is held";
  desktop.observer().release(1);
  desktop.observer().waitUntil("the window stands under the strip",
                               [&] { return desktop.frame(report).y == Strip::height; });
  strip.waitUntilOver(report);
}

TEST_P(WindowStates, FullScreenTenTimesGivesTheFrameBackEachTime) {
  const auto report = editor().open("Report", {200, 200, 600, 500});
  startPellar();
  strip.waitUntilOver(report);
  const auto before = desktop.frame(report);
  for (int time = 0; time < 10; ++time) {
    desktop.enterFullScreen(report);
    strip.waitUntilHidden();
    waitUntilIdle();
    EXPECT_EQ(desktop.observer().box(report.id), (Box{0, 0, 1440, 900}));
    desktop.leaveFullScreen(report);
    strip.waitUntilOver(report);
    waitUntilIdle();
    EXPECT_EQ(desktop.frame(report), before) << "time " << time + 1;
  }
}

// As with a key that is held down.
TEST_P(WindowStates, FullScreenInAndOutInOneGoGivesTheFrameBack) {
  const auto report = editor().open("Report", {200, 200, 600, 500});
  startPellar();
  strip.waitUntilOver(report);
  const auto before = desktop.frame(report);
  const auto fullScreen = desktop.observer().atom("_NET_WM_STATE_FULLSCREEN");
  for (int time = 0; time < 10; ++time) {
    for (const std::uint32_t on : {1U, 0U})
      desktop.observer().sendToRoot(report.id, "_NET_WM_STATE", {on, fullScreen, 0, 2});
  }
  waitUntilFrame(report, before);
  waitUntilIdle();
  EXPECT_EQ(desktop.frame(report), before);
  strip.waitUntilOver(report);
}

// --- maximised ---

class Maximised : public WindowStates {
 protected:
  [[nodiscard]] bool isMaximised(Window window) {
    return desktop.observer().hasState(window.id, "_NET_WM_STATE_MAXIMIZED_VERT");
  }
  void setMaximised(Window window, bool on) {
    desktop.observer().sendToRoot(window.id, "_NET_WM_STATE",
                                  {on ? 1U : 0U, desktop.observer().atom("_NET_WM_STATE_MAXIMIZED_VERT"),
                                   desktop.observer().atom("_NET_WM_STATE_MAXIMIZED_HORZ"), 2});
  }
  void doubleClickTitleBar(Window window) {
    const auto frame = desktop.frame(window);
    desktop.observer().doubleClick(frame.x + frame.width / 2, frame.y + 10);
  }
  // The window is maximised, and has all of the screen but the strip's room and what `above` keeps free.
  void expectMaximisedBelowItsStrip(Window window, int above = 0) {
    const Box below{0, above + Strip::height, 1440, 900 - above - Strip::height};
    waitUntilFrame(window, below);
    strip.waitUntilOver(window);
    waitUntilIdle();
    EXPECT_TRUE(isMaximised(window));
    EXPECT_EQ(desktop.frame(window), below);
    EXPECT_EQ(strip.box()->y, above);
  }
  void expectAsBefore(Window window, const Box& before) {
    waitUntilFrame(window, before);
    strip.waitUntilOver(window);
    waitUntilIdle();
    EXPECT_FALSE(isMaximised(window));
    EXPECT_EQ(desktop.frame(window), before);
  }
  using Change = std::function<void(Window, bool on)>;
  // The window, opened at `place`, is made large and as before again and again.
  void enlarge(int times, const Box& place, const Change& change,
               const std::function<void(Window, const Box& before)>& expectLarge) {
    const auto report = editor().open("Report", place);
    startPellar();
    strip.waitUntilOver(report);
    const auto before = desktop.frame(report);
    for (int time = 1; time <= times; ++time) {
      SCOPED_TRACE(time);
      change(report, true);
      expectLarge(report, before);
      change(report, false);
      expectAsBefore(report, before);
    }
  }
  void maximiseTenTimes(const Change& change) {
    enlarge(10, {200, 200, 600, 500}, change,
            [this](Window report, const Box& /*before*/) { expectMaximisedBelowItsStrip(report); });
  }
};

PELLAR_FOR_EVERY_WINDOW_MANAGER(Maximised);

TEST_P(Maximised, TenTimesByAProgramTheWindowStandsBelowItsStripAndComesBack) {
  maximiseTenTimes([this](Window report, bool on) { setMaximised(report, on); });
}

TEST_P(Maximised, TenTimesByTheTitleBarTheWindowStandsBelowItsStripAndComesBack) {
  maximiseTenTimes([this](Window report, bool /*on*/) { doubleClickTitleBar(report); });
}

// Those that have a key for it, each the same.
class MaximisedByKey : public Maximised {
 protected:
  void changeByKey() {
    desktop.observer().key(altKey, true);
    desktop.observer().strike(f10Key);
    desktop.observer().key(altKey, false);
  }
};

INSTANTIATE_TEST_SUITE_P(WindowManagers, MaximisedByKey,
                         ::testing::Values(WindowManager::openbox, WindowManager::metacity,
                                           WindowManager::xfwm4),
                         [](const auto& manager) { return nameOf(manager.param); });

TEST_P(MaximisedByKey, TenTimesTheWindowStandsBelowItsStripAndComesBack) {
  maximiseTenTimes([this](Window /*report*/, bool /*on*/) { changeByKey(); });
}

TEST_P(Maximised, AWindowThatWasMaximisedBeforeGetsItsStripAndStaysMaximised) {
  const auto report = editor().open("Report", {200, 200, 600, 500});
  const auto before = desktop.frame(report);
  setMaximised(report, true);
  desktop.observer().waitUntil("the window is maximised", [&] { return isMaximised(report); });
  startPellar();
  expectMaximisedBelowItsStrip(report);
  setMaximised(report, false);
  expectAsBefore(report, before);
}

TEST_P(Maximised, AnotherApplicationsWindowIsStillMaximisedWhenTheUserGoesToIt) {
  Application letters(desktop, "letters");
  const auto letter = letters.open("Letter", {300, 300, 700, 400});
  const auto before = desktop.frame(letter);
  setMaximised(letter, true);
  desktop.observer().waitUntil("the window is maximised", [&] { return isMaximised(letter); });
  const auto report = editor().open("Report", {200, 200, 600, 500});
  startPellar();
  strip.waitUntilOver(report);
  // The user works in the report for some time.
  for (int time = 0; time < 5; ++time) waitUntilIdle();
  desktop.activate(letter);
  expectMaximisedBelowItsStrip(letter);
  setMaximised(letter, false);
  expectAsBefore(letter, before);
}

TEST_P(Maximised, WithoutPellarTheWindowHasTheWholeScreenAgain) {
  const auto report = editor().open("Report", {200, 200, 600, 500});
  startPellar();
  strip.waitUntilOver(report);
  setMaximised(report, true);
  expectMaximisedBelowItsStrip(report);
  stopPellar();
  waitUntilFrame(report, {0, 0, 1440, 900});
}

// The room that is reserved is the strip's own, not a panel's.
TEST_P(Maximised, AnotherWindowZoomedBesideAMaximisedOneFillsTheSameArea) {
  const auto plan = editor().open("Plan", {200, 200, 600, 500});
  const auto report = editor().open("Report", {240, 240, 600, 500});
  startPellar();
  strip.waitUntilOver(report);
  setMaximised(plan, true);
  desktop.observer().waitUntil("room is made below the strip",
                               [&] { return desktop.frame(plan).y == Strip::height; });
  desktop.activate(report);
  strip.waitUntilOver(report);
  waitUntilIdle();
  strip.clickWindowButton(WindowButton::zoom);
  waitUntilFrame(report, {0, Strip::height, 1440, 900 - Strip::height});
  strip.waitUntilOver(report);
}

TEST_P(Maximised, FullScreenAndBackLeavesItMaximised) {
  const auto report = editor().open("Report", {200, 200, 600, 500});
  startPellar();
  strip.waitUntilOver(report);
  const auto before = desktop.frame(report);
  setMaximised(report, true);
  expectMaximisedBelowItsStrip(report);
  for (int time = 1; time <= 3; ++time) {
    desktop.enterFullScreen(report);
    strip.waitUntilHidden();
    desktop.leaveFullScreen(report);
    expectMaximisedBelowItsStrip(report);
  }
  setMaximised(report, false);
  expectAsBefore(report, before);
}

// xfwm4 takes no notice of monitors that are not outputs.
class BelowAnotherScreen : public Maximised {};
INSTANTIATE_TEST_SUITE_P(WindowManagers, BelowAnotherScreen,
                         ::testing::Values(WindowManager::openbox, WindowManager::metacity),
                         [](const auto& manager) { return nameOf(manager.param); });

// No room can be reserved on a screen below another one; there is room on that one.
TEST_P(BelowAnotherScreen, AMaximisedWindowHasAllOfItAndTheStripIsAbove) {
  desktop.run({"xrandr", "--setmonitor", "top", "1440/380x450/120+0+0", "screen"});
  desktop.run({"xrandr", "--setmonitor", "bottom", "1440/380x450/120+0+450", "none"});
  enlarge(
      10, {200, 560, 600, 200}, [this](Window report, bool on) { setMaximised(report, on); },
      [this](Window report, const Box& /*before*/) {
        waitUntilFrame(report, {0, 450, 1440, 450});
        strip.waitUntilOver(report);
        waitUntilIdle();
        EXPECT_TRUE(isMaximised(report));
        EXPECT_EQ(strip.box()->y, 450 - Strip::height);
      });
}

TEST_P(Maximised, AWindowThatFillsTheHeightOnlyKeepsThatState) {
  enlarge(
      3, {200, 200, 600, 500},
      [this](Window report, bool on) { desktop.setState(report, "_NET_WM_STATE_MAXIMIZED_VERT", on); },
      [this](Window report, const Box& before) {
        waitUntilFrame(report, {before.x, Strip::height, before.width, 900 - Strip::height});
        strip.waitUntilOver(report);
        waitUntilIdle();
        EXPECT_TRUE(isMaximised(report));
      });
}

}  // namespace

}  // namespace pellar::e2e
