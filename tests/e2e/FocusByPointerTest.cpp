// Where the window under the pointer has the keyboard, a tab that was clicked counts until the pointer moves.

#include <gtest/gtest.h>

#include "tests/e2e/DesktopTest.h"

namespace pellar::e2e {

namespace {

class FocusByPointer : public DesktopTest, public ::testing::WithParamInterface<WindowManager> {
 protected:
  FocusByPointer() : DesktopTest(GetParam(), ScreenSize{}, Focus::byPointer) {}

  // The strip of the third window lies over the second one; the first is elsewhere.
  void openThree() {
    far = editor().open("Far", {40, 560, 320, 240});
    below = editor().open("Below", {420, 80, 900, 700});
    front = editor().open("Front", {520, 300, 600, 300});
    startPellar();
    pointInto(front);
    strip.waitUntilOver(front);
    strip.waitUntilTabs(3);
  }
  // As a hand does: to the middle of the window, and on by a little.
  void pointInto(Window window) {
    const auto frame = desktop.frame(window);
    const int x = frame.x + frame.width / 2;
    const int y = frame.y + frame.height / 2;
    desktop.observer().waitUntil("the window under the pointer is active", [&, wobble = 0]() mutable {
      wobble = 1 - wobble;
      desktop.observer().movePointer(x + wobble, y);
      return desktop.isActive(window);
    });
  }
  void expectKeysIn(Window window) {
    desktop.observer().strike('x');
    desktop.waitUntilReceived(window, 'x', 1);
  }

  Window far;
  Window below;
  Window front;
};

PELLAR_FOR_EVERY_WINDOW_MANAGER(FocusByPointer);

TEST_P(FocusByPointer, AClickedTabsWindowKeepsTheKeyboardThoughAnotherLiesUnderThePointer) {
  openThree();
  strip.clickTab(0);
  strip.waitUntilOver(far);
  // Some window managers give the window under the pointer the keyboard only after a while.
  waitUntilIdle();
  EXPECT_TRUE(desktop.isActive(far));
  expectKeysIn(far);
  EXPECT_EQ(desktop.keysReceived(below, 'x'), 0);
}

TEST_P(FocusByPointer, ThePointerThatMovesOnTakesTheKeyboardAlong) {
  openThree();
  strip.clickTab(0);
  strip.waitUntilOver(far);
  waitUntilIdle();
  const auto pointer = desktop.observer().pointer();
  desktop.observer().movePointer(pointer.x + 1, pointer.y);
  desktop.waitUntilActive(below);
  strip.waitUntilOver(below);
}

TEST_P(FocusByPointer, AStripThatComesBackUnderThePointerTakesAClick) {
  openThree();
  strip.clickTab(0);
  strip.waitUntilOver(far);
  waitUntilIdle();
  desktop.activate(front);
  strip.waitUntilOver(front);
  waitUntilIdle();
  desktop.observer().press(1);
  desktop.observer().release(1);
  strip.waitUntilOver(far);
}

}  // namespace

}  // namespace pellar::e2e
