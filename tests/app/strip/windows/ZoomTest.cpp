#include <gtest/gtest.h>

#include "tests/support/StripStory.h"

namespace pellar {
namespace {

class Zooming : public StripStory {
 protected:
  // The frame that zooming gives on the simulated screen.
  static constexpr AxRect zoomed{0, 57, 1440, 843};

  void zoom() { strip().clickTool(tool::zoom); }
  // The dock comes up and takes that much from the bottom of the screen.
  void raiseDock(double height) {
    mac.screens().set({SimScreens::screen({0, 0, 1440, 900}, SimScreens::menuBarHeight, height)});
  }
};

TEST_F(Zooming, ZoomingTwiceGivesTheFrameBackExactly) {
  const auto plan = open("Plan", {101.5, 203.25, 1200, 601});
  start();
  zoom();
  EXPECT_EQ(plan.frame(), zoomed);
  expectStripOver(plan);
  strip().doubleClickEmptyStrip();
  EXPECT_EQ(plan.frame(), (AxRect{101.5, 203.25, 1200, 601}));
}

TEST_F(Zooming, AZoomedWindowThatWasMovedIsZoomedAnew) {
  auto plan = open("Plan");
  start();
  zoom();
  plan.setFrame({50, 100, 1000, 500});
  zoom();
  EXPECT_EQ(plan.frame(), zoomed);
  zoom();
  EXPECT_EQ(plan.frame(), (AxRect{50, 100, 1000, 500}));
}

TEST_F(Zooming, AWindowThatAlmostFillsTheScreenFillsItAndHasItsOwnFrameToReturnTo) {
  auto plan = open("Plan", {1, 58, 1439, 842});
  start();
  zoom();
  EXPECT_EQ(plan.frame(), zoomed);
  zoom();
  EXPECT_EQ(plan.frame(), (AxRect{1, 58, 1439, 842}));
}

TEST_F(Zooming, AWindowThatGrowsInStepsReturnsFromBeingZoomed) {
  auto terminal = open("Terminal", {100, 200, 804, 374});
  terminal.quirks().minimumSize = {24, 34};
  terminal.quirks().sizeIncrement = {10, 20};
  start();
  zoom();
  EXPECT_EQ(terminal.frame(), (AxRect{0, 57, 1434, 834})) << "as much as whole lines and columns fill";
  zoom();
  EXPECT_EQ(terminal.frame(), (AxRect{100, 200, 804, 374}));
  zoom();
  terminal.moveTo({50, 80});
  zoom();
  EXPECT_EQ(terminal.frame(), (AxRect{0, 57, 1434, 834})) << "once moved it is zoomed anew";
  zoom();
  EXPECT_EQ(terminal.frame(), (AxRect{50, 80, 1434, 834}));
}

TEST_F(Zooming, AWindowThatGrowsInStepsAndAnswersLateReturnsFromBeingZoomed) {
  auto terminal = open("Terminal", {100, 200, 804, 374});
  terminal.quirks().minimumSize = {24, 34};
  terminal.quirks().sizeIncrement = {10, 20};
  terminal.quirks().frameDelay = std::chrono::milliseconds(300);
  start();
  const auto zoomAndWait = [&] {
    zoom();
    mac.advance(std::chrono::seconds(2));
  };
  zoomAndWait();
  EXPECT_EQ(terminal.frame(), (AxRect{0, 57, 1434, 834}));
  zoomAndWait();
  EXPECT_EQ(terminal.frame(), (AxRect{100, 200, 804, 374}));
  zoomAndWait();
  terminal.setFrame({0, 57, 1000, 834});
  mac.settle();
  zoomAndWait();
  EXPECT_EQ(terminal.frame(), (AxRect{0, 57, 1434, 834})) << "made smaller it is zoomed anew";
}

TEST_F(Zooming, AWindowThatGrowsOnlySoFarAndAnswersLateReturnsFromBeingZoomed) {
  auto palette = open("Palette", {100, 200, 500, 300});
  palette.quirks().maximumSize = {600, 400};
  palette.quirks().frameDelay = std::chrono::milliseconds(300);
  start();
  zoom();
  mac.advance(std::chrono::seconds(2));
  EXPECT_EQ(palette.frame(), (AxRect{0, 57, 600, 400}));
  zoom();
  mac.advance(std::chrono::seconds(2));
  EXPECT_EQ(palette.frame(), (AxRect{100, 200, 500, 300}));
}

TEST_F(Zooming, AWindowThatCouldNotBeZoomedIsZoomedTheNextTime) {
  auto plan = open("Plan");
  plan.quirks().refusesMoves = true;
  plan.quirks().refusesSizes = true;
  start();
  zoom();
  EXPECT_EQ(plan.frame(), (AxRect{100, 200, 1200, 600}));
  plan.quirks().refusesMoves = false;
  plan.quirks().refusesSizes = false;
  zoom();
  EXPECT_EQ(plan.frame(), zoomed);
  zoom();
  EXPECT_EQ(plan.frame(), (AxRect{100, 200, 1200, 600}));
}

TEST_F(Zooming, AFrameOnceReturnedToIsForgotten) {
  auto plan = open("Plan");
  start();
  zoom();
  zoom();
  plan.setFrame(zoomed);
  zoom();
  EXPECT_EQ(plan.frame(), zoomed);
}

TEST_F(Zooming, AWindowThatFillsAsMuchAsItCanIsZoomedAnewWhenTheDockComes) {
  auto terminal = open("Terminal", {100, 200, 804, 374});
  terminal.quirks().minimumSize = {24, 34};
  terminal.quirks().sizeIncrement = {10, 20};
  start();
  zoom();
  ASSERT_EQ(terminal.frame(), (AxRect{0, 57, 1434, 834}));
  raiseDock(70);
  zoom();
  EXPECT_EQ(terminal.frame(), (AxRect{0, 57, 1434, 754})) << "into what the dock leaves";
  zoom();
  EXPECT_EQ(terminal.frame(), (AxRect{0, 57, 1434, 834})) << "back to where it was before that";
}

TEST_F(Zooming, AWindowThatFilledTheScreenIsZoomedAnewWhenTheDockComes) {
  const auto plan = open("Plan");
  start();
  zoom();
  ASSERT_EQ(plan.frame(), zoomed);
  raiseDock(70);
  zoom();
  EXPECT_EQ(plan.frame(), (AxRect{0, 57, 1440, 773}));
}

TEST_F(Zooming, AZoomedWindowMovedByLessThanTwoPointsIsStillZoomed) {
  auto plan = open("Plan");
  start();
  zoom();
  plan.setFrame({1.9, 58.9, 1438.1, 841.1});
  mac.settle();
  zoom();
  EXPECT_EQ(plan.frame(), (AxRect{100, 200, 1200, 600}));
  zoom();
  plan.setFrame({2, 57, 1440, 843});
  mac.settle();
  zoom();
  EXPECT_EQ(plan.frame(), zoomed) << "two points are too many";
}

}  // namespace
}  // namespace pellar
