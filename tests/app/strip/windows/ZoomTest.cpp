#include <gtest/gtest.h>

#include "tests/support/StripStory.h"

namespace pellar {
namespace {

class Zooming : public StripStory {
 protected:
  void zoom() { strip().clickTool(tool::zoom); }
  // The dock comes up and takes that much from the bottom of the screen.
  void raiseDock(double height) {
    mac.screens().set({SimScreens::screen({0, 0, 1440, 900}, SimScreens::menuBarHeight, height)});
  }
};

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
  ASSERT_EQ(plan.frame(), (AxRect{0, 57, 1440, 843}));
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
  EXPECT_EQ(plan.frame(), (AxRect{0, 57, 1440, 843})) << "two points are too many";
}

}  // namespace
}  // namespace pellar
