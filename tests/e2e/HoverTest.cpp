#include <gtest/gtest.h>

#include "tests/e2e/DesktopTest.h"
#include "tests/e2e/SidePanel.h"

namespace pellar::e2e {

namespace {

constexpr int pickerWidth = 372;

class Hover : public EveryWindowManager {
 protected:
  void openTwo() {
    report = editor().open("Report", {60, 120, 900, 400});
    plan = editor().open("Plan", {120, 180, 900, 400});
    startPellar();
    strip.waitUntilOver(plan);
    strip.waitUntilTabs(2);
  }

  SidePanel card = SidePanel::card(desktop, strip);
  SidePanel picker = SidePanel::picker(desktop, strip);
  Window report;
  Window plan;
};

PELLAR_FOR_EVERY_WINDOW_MANAGER(Hover);

TEST_P(Hover, RestingOnATabShowsItsCardWhoseButtonClosesItsWindow) {
  openTwo();
  strip.pointAtTab(0);
  const Box shown = card.waitUntilShown();
  const Box place = *strip.box();
  EXPECT_EQ(shown.x, place.x + 6);
  EXPECT_EQ(shown.y, place.y + 29 + 4);
  EXPECT_TRUE(desktop.isActive(plan));
  desktop.observer().click(shown.x + shown.width - 6 - 30 + 13, shown.y + 20);
  desktop.observer().waitUntil("the window is closed", [&] { return !desktop.observer().box(report.id); });
  card.waitUntilGone();
  strip.waitUntilTabs(1);
  EXPECT_TRUE(desktop.isActive(plan));
}

TEST_P(Hover, TheCardGoesWhenThePointerDoes) {
  openTwo();
  strip.pointAtTab(1);
  const Box shown = card.waitUntilShown();
  // Onto the card, where it may stay as long as it likes, and away.
  desktop.observer().movePointer(shown.x + 30, shown.y + 30);
  EXPECT_FALSE(pellar->waitForEnd(std::chrono::milliseconds(600)).has_value());
  EXPECT_TRUE(card.box().has_value());
  desktop.observer().movePointer(1400, 880);
  card.waitUntilGone();
}

TEST_P(Hover, TheCardGoesWithTheStrip) {
  openTwo();
  strip.pointAtTab(1);
  card.waitUntilShown();
  desktop.enterFullScreen(plan);
  strip.waitUntilHidden();
  card.waitUntilGone();
}

TEST_P(Hover, ACellOfThePickerTilesTheWindow) {
  openTwo();
  strip.pointAtWindowButton(WindowButton::zoom);
  const Box shown = picker.waitUntilShown();
  EXPECT_EQ(shown.width, pickerWidth);
  EXPECT_EQ(shown.y, strip.box()->y + 28 + 2);
  // The left half, in the middle of its cell.
  desktop.observer().click(shown.x + 36, shown.y + 42);
  desktop.observer().waitUntil("the window fills the left half below the strip", [&] {
    return desktop.frame(plan) == Box{0, Strip::height, 720, 900 - Strip::height};
  });
  picker.waitUntilGone();
  strip.waitUntilOver(plan);
}

}  // namespace

}  // namespace pellar::e2e
