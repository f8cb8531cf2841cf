#include <gtest/gtest.h>

#include "tests/e2e/DesktopTest.h"

namespace pellar::e2e {

namespace {

constexpr int pickerWidth = 372;
constexpr int pickerHeight = 150;

class Hover : public EveryWindowManager {
 protected:
  void openTwo() {
    report = editor().open("Report", {60, 120, 900, 400});
    plan = editor().open("Plan", {120, 180, 900, 400});
    startPellar();
    strip.waitUntilOver(plan);
    strip.waitUntilTabs(2);
  }
  // The shown window of Pellar of that height, beside the strip.
  [[nodiscard]] std::optional<Box> panel(int height) {
    for (const auto window : strip.allWindows()) {
      const auto box = desktop.observer().box(window);
      if (box && box->height == height && desktop.observer().isViewable(window)) return box;
    }
    return std::nullopt;
  }
  Box waitForPanel(int height) {
    desktop.observer().waitUntil("the panel is shown", [&] { return panel(height).has_value(); });
    return *panel(height);
  }
  void waitUntilGone(int height) {
    desktop.observer().waitUntil("the panel is gone", [&] { return !panel(height).has_value(); });
  }
  void restOnTab(std::size_t index) {
    const auto place = *strip.box();
    desktop.observer().movePointer(place.x + strip.tabs()[index].marker, place.y + Strip::height / 2);
  }
  // Middle of the zoom button.
  [[nodiscard]] Box zoomButton() {
    const auto place = *strip.box();
    return {place.x + place.width - 53, place.y + Strip::height / 2, 0, 0};
  }

  static constexpr int cardHeight = 58;
  Window report;
  Window plan;
};

PELLAR_FOR_EVERY_WINDOW_MANAGER(Hover);

TEST_P(Hover, RestingOnATabShowsItsCardWhoseButtonClosesItsWindow) {
  openTwo();
  restOnTab(0);
  const Box card = waitForPanel(cardHeight);
  const Box place = *strip.box();
  EXPECT_EQ(card.x, place.x + 6);
  EXPECT_EQ(card.y, place.y + 29 + 4);
  EXPECT_TRUE(desktop.isActive(plan));
  desktop.observer().click(card.x + card.width - 6 - 30 + 13, card.y + 20);
  desktop.observer().waitUntil("the window is closed", [&] { return !desktop.observer().box(report.id); });
  waitUntilGone(cardHeight);
  strip.waitUntilTabs(1);
  EXPECT_TRUE(desktop.isActive(plan));
}

TEST_P(Hover, TheCardGoesWhenThePointerDoes) {
  openTwo();
  restOnTab(1);
  const Box card = waitForPanel(cardHeight);
  // Onto the card, where it may stay as long as it likes, and away.
  desktop.observer().movePointer(card.x + 30, card.y + 30);
  EXPECT_FALSE(pellar->waitForEnd(std::chrono::milliseconds(600)).has_value());
  EXPECT_TRUE(panel(cardHeight).has_value());
  desktop.observer().movePointer(1400, 880);
  waitUntilGone(cardHeight);
}

TEST_P(Hover, TheCardGoesWithTheStrip) {
  openTwo();
  restOnTab(1);
  waitForPanel(cardHeight);
  desktop.enterFullScreen(plan);
  strip.waitUntilHidden();
  waitUntilGone(cardHeight);
}

TEST_P(Hover, ACellOfThePickerTilesTheWindow) {
  openTwo();
  const Box button = zoomButton();
  desktop.observer().movePointer(button.x, button.y);
  const Box picker = waitForPanel(pickerHeight);
  EXPECT_EQ(picker.width, pickerWidth);
  EXPECT_EQ(picker.y, strip.box()->y + 28 + 2);
  // The left half, in the middle of its cell.
  desktop.observer().click(picker.x + 36, picker.y + 42);
  desktop.observer().waitUntil("the window fills the left half below the strip", [&] {
    return desktop.frame(plan) == Box{0, Strip::height, 720, 900 - Strip::height};
  });
  waitUntilGone(pickerHeight);
  strip.waitUntilOver(plan);
}

}  // namespace

}  // namespace pellar::e2e
